// SPDX-License-Identifier: Apache-2.0

// Times whole calls of one or more builds of the library, side by side:
//
//     vastrelline_calls LIBRARY [LIBRARY] [--case TEXT] [--rounds N] [--calls N] [--small]
//
// Every case runs in a process of its own, round after round, the libraries in turn. The table gives, of all
// rounds, the least CPU time of the first call of a process, of its tenth and of any; the page faults of the
// first call and of the tenth; the memory that the calls need at most beyond the host's own frames; and
// frames a second. With two libraries the last column is the first library's least time as a share of the
// second's.

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CallCases.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

struct Options {
    std::vector<std::string> libraries;
    std::string onlyCase;  // a piece of the names of the cases to run
    int rounds = 3;
    int calls = 12;
    bool isSmall = false;
};

// What one process has measured.
struct Figures {
    double firstMs = 0;
    double tenthMs = 0;
    double leastMs = 0;
    double firstFaults = 0;
    double laterFaults = 0;
    double peakBytes = 0;
};

constexpr int kTenth = 9;

double CpuMs() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double PageFaults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_minflt);
}

// The most memory that this process has had at a time, since the last reset.
double PeakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::atof(line.c_str() + 6) * 1024;
    }
    throw std::runtime_error("no VmHWM in /proc/self/status");
}

void ResetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

template <typename Function>
Function* FindFunction(void* library, const char* name) {
    void* const found = dlsym(library, name);
    if (found == nullptr) throw std::runtime_error(std::string("the library has no ") + name);
    return reinterpret_cast<Function*>(found);
}

// One call of the case, ready to run.
class Caller {
public:
    Caller(const std::string& path, const CallCase& call, std::string profile)
        : call_(call),
          profile_(std::move(profile)),
          library_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)),
          input_(call.frame),
          output_(call.frame),
          geometry_(GeometryOf(call.frame)) {
        if (library_ == nullptr) throw std::runtime_error(dlerror());
        withGeometry_ = FindFunction<decltype(ImageProcessingS)>(library_, "ImageProcessingS");
        cr_ = FindFunction<decltype(ImageProcessingCR)>(library_, "ImageProcessingCR");
        doseInfo_ = FindFunction<decltype(Getdose_ImageInfo)>(library_, "Getdose_ImageInfo");
    }

    // CPU milliseconds of one call on a fresh copy of the frame. A call that does not do what the case is
    // there for throws.
    double Run() {
        std::copy(call_.frame.pixels.begin(), call_.frame.pixels.end(), input_.pixels.begin());
        const double start = CpuMs();
        const int32_t code = Call();
        const double elapsed = CpuMs() - start;
        if (code != VASTRELLINE_OK) throw std::runtime_error("code " + std::to_string(code));
        if (call_.isLow.has_value()) TestDecision(*call_.isLow);
        return elapsed;
    }

private:
    int32_t Call() {
        uint16_t* const in = input_.Data();
        uint16_t* const out = output_.Data();
        const int32_t width = input_.width;
        const int32_t height = input_.height;
        const char* const profile = profile_.c_str();
        const char* const section = call_.section.c_str();
        switch (call_.called) {
            case CalledExport::ImageProcessingS:
                return withGeometry_(in, out, width, height, profile, section, 0, 0, &geometry_);
            case CalledExport::ImageProcessingCR:
                return cr_(in, out, width, height, profile, section);
        }
        return VASTRELLINE_INTERNAL_FAILURE;
    }

    void TestDecision(bool expected) {
        int32_t isLow = 0;
        doseInfo_(nullptr, nullptr, nullptr, nullptr, &isLow);
        if ((isLow != 0) != expected) throw std::runtime_error("the decision on the exposure went amiss");
    }

    const CallCase& call_;
    std::string profile_;
    void* library_;
    Frame input_;
    Frame output_;
    SensorGeometry geometry_;
    decltype(ImageProcessingS)* withGeometry_;
    decltype(ImageProcessingCR)* cr_;
    decltype(Getdose_ImageInfo)* doseInfo_;
};

// A process of its own makes one call, so that the sensor's values stand in the profile; and time goes by,
// for a freshly written file is looked at twice. Both are no part of a host's day.
void SettleProfile(const std::string& library, const CallCase& call, const std::string& profile) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            Caller(library, call, profile).Run();
            _exit(EXIT_SUCCESS);
        } catch (const std::exception&) {
            _exit(EXIT_FAILURE);  // the measured call will say why
        }
    }
    waitpid(child, nullptr, 0);
    usleep(50'000);
}

Figures MeasureHere(const std::string& library, const CallCase& call, int calls) {
    const TemporaryFolder folder;
    WriteCaseProfile(folder.Path() / "profile.ini", call.frame);
    SettleProfile(library, call, folder.Narrow("profile.ini"));
    Caller caller(library, call, folder.Narrow("profile.ini"));
    ResetPeak();
    const double ownBytes = PeakBytes();
    Figures figures;
    figures.leastMs = 1e30;
    for (int i = 0; i < calls; ++i) {
        const double faultsBefore = PageFaults();
        const double elapsed = caller.Run();
        const double faults = PageFaults() - faultsBefore;
        if (i == 0) {
            figures.firstMs = elapsed;
            figures.firstFaults = faults;
        }
        if (i <= kTenth) {
            figures.tenthMs = elapsed;
            figures.laterFaults = faults;
        }
        figures.leastMs = std::min(figures.leastMs, elapsed);
    }
    figures.peakBytes = PeakBytes() - ownBytes;
    return figures;
}

// In a child, so that its first call is the first one.
Figures Measure(const std::string& library, const CallCase& call, int calls) {
    int ends[2] = {};
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    std::fflush(stdout);
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process");
    if (child == 0) {
        int code = EXIT_FAILURE;
        try {
            const Figures figures = MeasureHere(library, call, calls);
            if (write(ends[1], &figures, sizeof figures) == sizeof figures) code = EXIT_SUCCESS;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s, %s: %s\n", library.c_str(), call.name.c_str(), error.what());
        }
        _exit(code);
    }
    close(ends[1]);
    Figures figures;
    const bool isRead = read(ends[0], &figures, sizeof figures) == sizeof figures;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!isRead || status != 0) throw std::runtime_error("a case failed: " + call.name);
    return figures;
}

void KeepLeast(Figures& kept, const Figures& seen) {
    const auto keep = [](double& least, double value) { least = std::min(least, value); };
    keep(kept.firstMs, seen.firstMs);
    keep(kept.tenthMs, seen.tenthMs);
    keep(kept.leastMs, seen.leastMs);
    keep(kept.firstFaults, seen.firstFaults);
    keep(kept.laterFaults, seen.laterFaults);
    keep(kept.peakBytes, seen.peakBytes);
}

void PrintCase(const Options& options, const CallCase& call) {
    std::vector<Figures> least(options.libraries.size());
    for (int round = 0; round < options.rounds; ++round) {
        for (size_t i = 0; i < options.libraries.size(); ++i) {
            const Figures seen = Measure(options.libraries[i], call, options.calls);
            if (round == 0) least[i] = seen;
            KeepLeast(least[i], seen);
        }
    }
    const double pixels = static_cast<double>(call.frame.pixels.size());
    for (size_t i = 0; i < least.size(); ++i) {
        const Figures& f = least[i];
        std::printf("| %-20s | %zu | %8.3f | %8.3f | %8.3f | %6.0f | %6.0f | %5.1f | %7.1f |",
                    call.name.c_str(), i + 1, f.firstMs, f.tenthMs, f.leastMs, f.firstFaults, f.laterFaults,
                    f.peakBytes / pixels, 1e3 / f.leastMs);
        if (i == 0 && least.size() > 1) std::printf(" %4.2f |", f.leastMs / least[1].leastMs);
        std::printf("\n");
    }
}

Options ParseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const auto next = [&]() -> std::string {
            if (i + 1 >= argc) throw std::runtime_error(argument + " needs a value");
            return argv[++i];
        };
        if (argument == "--case")
            options.onlyCase = next();
        else if (argument == "--rounds")
            options.rounds = std::stoi(next());
        else if (argument == "--calls")
            options.calls = std::stoi(next());
        else if (argument == "--small")
            options.isSmall = true;
        else
            options.libraries.push_back(argument);
    }
    if (options.libraries.empty() || options.rounds < 1 || options.calls < 1)
        throw std::runtime_error(
            "usage: vastrelline_calls LIBRARY [LIBRARY] [--case TEXT] [--rounds N] [--calls N] [--small]");
    return options;
}

}  // namespace
}  // namespace vastrelline

int main(int argc, char** argv) {
    using namespace vastrelline;
    try {
        const Options options = ParseOptions(argc, argv);
        std::printf(
            "| call | library | first ms | tenth ms | least ms | faults first | later | B/pixel | "
            "frames/s | share |\n|---|---|---|---|---|---|---|---|---|---|\n");
        for (const CallCase& call : MakeCallCases(options.isSmall)) {
            if (call.name.find(options.onlyCase) != std::string::npos) PrintCase(options, call);
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
