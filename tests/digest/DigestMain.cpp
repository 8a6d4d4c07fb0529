// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "ExpectedList.h"
#include "InstructionLimit.h"
#include "Options.h"
#include "Performance.h"
#include "RunGroups.h"
#include "Sha256.h"

namespace vastrelline::digest {

namespace {

constexpr int kDiffers = 1;
constexpr int kCannotRun = 2;
constexpr int kNoSuchMachine = 77;

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void Tell(const std::string& text) { std::fwrite((text + "\n").data(), 1, text.size() + 1, stderr); }

// The folder of all runs of this process, gone with the object.
class BaseFolder {
public:
    explicit BaseFolder(const std::string& parent) {
        const std::filesystem::path folder =
            parent.empty() ? DefaultParent() : std::filesystem::absolute(parent);
        std::random_device entropy;
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = folder / ("vd" + std::to_string(entropy()) + std::to_string(now));
        std::filesystem::create_directory(path_);
    }
    ~BaseFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    BaseFolder(const BaseFolder&) = delete;
    BaseFolder& operator=(const BaseFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    // Profiles are written through to the disk; in memory that costs nothing.
    static std::filesystem::path DefaultParent() {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code ignored;
        return std::filesystem::is_directory(memory, ignored) ? memory
                                                              : std::filesystem::temp_directory_path();
    }

    std::filesystem::path path_;
};

// The values of a connected sensor would take part in every run of the configured chain.
void ExpectNoSensor() {
#ifdef VASTRELLINE_SENSOR_ROOT
    const std::filesystem::path profile = std::filesystem::path(VASTRELLINE_SENSOR_ROOT) / "Brindmap.ini";
    std::error_code ignored;
    if (std::filesystem::exists(profile, ignored))
        throw std::runtime_error("this machine has a sensor, whose values would count: " + profile.string());
#endif
}

GroupHash HashGroup(const RunGroup& group, const std::filesystem::path& base, const HostHabits& habits) {
    Sha256 hash;
    for (const DigestRun& run : group.runs) hash.Add(HashOf(Perform(run, base, habits)));
    return {group.name, hash.Finish(), group.runs.size()};
}

// The hashes of all groups, in their order, whichever thread ran which.
std::vector<GroupHash> HashGroups(const std::vector<RunGroup>& groups, const std::filesystem::path& base,
                                  const DigestOptions& options) {
    std::vector<GroupHash> hashes(groups.size());
    std::atomic<size_t> next{0};
    std::mutex failures;
    std::exception_ptr failure;
    const auto work = [&] {
        try {
            for (size_t i = next++; i < groups.size(); i = next++)
                hashes[i] = HashGroup(groups[i], base, options.habits);
        } catch (...) {
            const std::lock_guard<std::mutex> lock(failures);
            failure = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    for (size_t i = 1; i < options.threads; ++i) threads.emplace_back(work);
    work();
    for (std::thread& thread : threads) thread.join();
    if (failure) std::rethrow_exception(failure);
    return hashes;
}

const RunGroup& FindGroup(const std::vector<RunGroup>& groups, const std::string& name) {
    const auto found =
        std::find_if(groups.begin(), groups.end(), [&](const auto& it) { return it.name == name; });
    if (found == groups.end()) throw std::invalid_argument("no group has the name " + name);
    return *found;
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void WriteWhole(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path);
}

void ShowRun(const DigestRun& run, const RunResult& result) {
    const char* const names[] = {"ImageProcessing",    "ImageProcessingS",   "ImageProcessing_N",
                                 "ImageProcessing_NS", "ImageProcessing_NE", "ImageProcessingCR",
                                 "RotateImage"};
    Print(std::string(names[static_cast<size_t>(run.function)]) + ", frame of kind " +
          std::to_string(static_cast<int>(run.frame.kind)) + ", " + std::to_string(run.frame.width) + " x " +
          std::to_string(run.frame.height) + ", section \"" + run.section + "\", mapping " +
          std::to_string(run.applyMapping) + ", spots " + std::to_string(run.applySpotCorrection) + "\n");
    Print(run.profile + "\n");
    for (const ResultPart& part : result) {
        Print(Sha256Of(part.bytes) + "  " + part.name + ", " + std::to_string(part.bytes.size()) +
              " bytes\n");
        if (part.isText && part.bytes.size() < 10000) Print(part.bytes + "\n");
    }
}

int Compare(const std::vector<GroupHash>& hashes, const DigestOptions& options) {
    std::vector<GroupHash> expected = ReadList(ReadWhole(options.check));
    if (!options.only.empty())
        std::erase_if(expected, [&](const GroupHash& group) {
            return std::find(options.only.begin(), options.only.end(), group.name) == options.only.end();
        });
    const std::vector<std::string> findings = CompareLists(expected, hashes);
    for (const std::string& finding : findings) Tell(finding);
    return findings.empty() ? 0 : kDiffers;
}

int RunDigest(std::vector<RunGroup> groups, const DigestOptions& options) {
    if (!options.only.empty()) {
        std::vector<RunGroup> chosen;
        for (const std::string& name : options.only) chosen.push_back(FindGroup(groups, name));
        groups = std::move(chosen);
    }
    const BaseFolder base(options.folder);
    std::vector<GroupHash> hashes = HashGroups(groups, base.Path(), options);
    if (options.only.empty()) hashes.push_back(HashOfAll(hashes));
    Print(WriteList(hashes));
    if (!options.write.empty()) WriteWhole(options.write, WriteList(hashes));
    return options.check.empty() ? 0 : Compare(hashes, options);
}

int Run(const DigestOptions& options) {
    if (options.task == DigestOptions::Task::Help) {
        Print(kDigestHelp);
        return 0;
    }
    std::vector<RunGroup> groups = AllGroups();
    if (options.task == DigestOptions::Task::List) {
        for (const RunGroup& group : groups)
            Print(group.name + " " + std::to_string(group.runs.size()) + "\n");
        return 0;
    }
    ExpectNoSensor();
    if (!CanHave(options.habits)) {
        Tell("this processor does not have that unit");
        return kNoSuchMachine;
    }
    if (!options.limit.empty()) {
        const LimitResult result = LimitInstructions(options.limit);
        if (result == LimitResult::NotInThisProgram)
            throw std::invalid_argument("--limit is for another program");
        if (result == LimitResult::NoSuchMachine) {
            Tell("this machine, or this build, does not have " + options.limit);
            return kNoSuchMachine;
        }
    }
    if (!options.locale.empty() && !SetCommaLocale(options.locale.c_str())) {
        Tell("no locale " + options.locale + " with a decimal comma");
        return kNoSuchMachine;
    }
    if (options.task == DigestOptions::Task::Digest) return RunDigest(std::move(groups), options);

    const RunGroup& group = FindGroup(groups, options.group);
    const BaseFolder base(options.folder);
    if (options.task == DigestOptions::Task::Show) {
        const DigestRun& run = group.runs.at(options.run);
        ShowRun(run, Perform(run, base.Path(), options.habits));
        return 0;
    }
    for (size_t i = 0; i < group.runs.size(); ++i)
        Print(group.name + " " + std::to_string(i) + "  " +
              HashOf(Perform(group.runs[i], base.Path(), options.habits)) + "\n");
    return 0;
}

}  // namespace

}  // namespace vastrelline::digest

int main(int argc, char** argv) {
    try {
        return vastrelline::digest::Run(vastrelline::digest::ReadOptions({argv + 1, argv + argc}));
    } catch (const std::exception& error) {
        vastrelline::digest::Tell(std::string("vastrelline_digest: ") + error.what());
        return vastrelline::digest::kCannotRun;
    }
}
