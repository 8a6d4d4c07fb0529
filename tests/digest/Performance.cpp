// SPDX-License-Identifier: Apache-2.0
#include "Performance.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <utility>

#include "DigestFrames.h"
#include "RunFolder.h"
#include "Sha256.h"

namespace vastrelline::digest {

namespace {

// What lies in the output before the call: no level that a stage would give to a whole frame.
std::vector<uint16_t> UntouchedPixels(size_t count) {
    std::vector<uint16_t> pixels(count);
    for (size_t i = 0; i < count; ++i) pixels[i] = static_cast<uint16_t>(i * 40503U + 7U);
    return pixels;
}

// Least byte first on every machine.
std::string BytesOf(const std::vector<uint16_t>& pixels) {
    std::string bytes(pixels.size() * 2, '\0');
    for (size_t i = 0; i < pixels.size(); ++i) {
        bytes[2 * i] = static_cast<char>(pixels[i] & 0xFFU);
        bytes[2 * i + 1] = static_cast<char>(pixels[i] >> 8U);
    }
    return bytes;
}

// Every not-a-number is the same one: which of them a processor makes tells nothing.
std::string BitsOf(double value) {
    if (value != value) return "nan";
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return std::to_string(bits);
}

std::string Dose() {
    int32_t median = -7;
    int32_t total = -7;
    int32_t low = -7;
    double ratio = -7;
    int32_t isLow = -7;
    Getdose_ImageInfo(&median, &total, &low, &ratio, &isLow);
    int32_t again = -7;
    Getdose_ImageInfo(nullptr, nullptr, &again, nullptr, nullptr);
    return std::to_string(median) + " " + std::to_string(total) + " " + std::to_string(low) + " " +
           BitsOf(ratio) + " " + std::to_string(isLow) + (again == low ? "" : " and other figures");
}

// The pointers of a call, null where the caller makes that mistake.
struct Arguments {
    uint16_t* input;
    uint16_t* output;
    const char* profile;
    const char* bitmap;
};

int32_t Call(const DigestRun& run, const Arguments& is) {
    const auto [width, height] = std::pair(run.frame.width, run.frame.height);
    const char* section = run.section.c_str();
    const SensorGeometry* geometry = run.geometry ? &*run.geometry : nullptr;
    const uint8_t mapping = run.applyMapping;
    const uint8_t spots = run.applySpotCorrection;
    switch (run.function) {
        case ExportedFunction::Plain:
            return ImageProcessing(is.input, is.output, width, height, is.profile, section, mapping, spots);
        case ExportedFunction::S:
            return ImageProcessingS(is.input, is.output, width, height, is.profile, section, mapping, spots,
                                    geometry);
        case ExportedFunction::N:
            return ImageProcessing_N(is.input, width, height, is.profile, section, mapping, spots, is.bitmap);
        case ExportedFunction::Ns:
            return ImageProcessing_NS(is.input, width, height, is.profile, section, mapping, spots, is.bitmap,
                                      geometry);
        case ExportedFunction::Ne:
            return ImageProcessing_NE(is.input, width, height, is.profile, section, mapping, spots, is.bitmap,
                                      nullptr, run.sensorMode);
        case ExportedFunction::Cr:
            return ImageProcessingCR(is.input, is.output, width, height, is.profile, section);
        case ExportedFunction::Rotate:
            return RotateImage(is.input, width, height, run.rotation, run.flip);
    }
    return -1;
}

// Whether the call may leave new figures of an exposure, which are the process's.
bool MayDecide(const DigestRun& run) {
    return (run.function == ExportedFunction::S || run.function == ExportedFunction::Ns) &&
           run.profile.find("PROCMODE=3") != std::string::npos;
}

std::string FreshName() {
    static std::atomic<uint32_t> count{0};
    return std::to_string(count++);
}

}  // namespace

RunResult Perform(const DigestRun& run, const std::filesystem::path& base, const HostHabits& habits) {
    const RunFolder folder(base, FreshName(), run.profile);
    std::vector<uint16_t> input = MakeFrame(run.frame);
    std::vector<uint16_t> output = UntouchedPixels(input.size());
    const std::string profile = folder.PathOf(run.mistake == Mistake::MissingProfile ? "none.ini" : "p.ini");
    const std::string bitmap = folder.PathOf("picture.bmp");
    // A frame without pixels is there all the same.
    uint16_t none = 0;
    Arguments arguments{input.empty() ? &none : input.data(), output.empty() ? &none : output.data(),
                        profile.c_str(), bitmap.c_str()};
    if (run.mistake == Mistake::NoInput) arguments.input = nullptr;
    if (run.mistake == Mistake::NoOutput) arguments.output = nullptr;
    if (run.mistake == Mistake::NoOutput) arguments.bitmap = nullptr;
    if (run.mistake == Mistake::NoProfilePath) arguments.profile = nullptr;

    RunResult result;
    {
        static std::mutex decisions;
        std::unique_lock<std::mutex> lock(decisions, std::defer_lock);
        if (MayDecide(run)) lock.lock();
        int32_t code = 0;
        {
            const ScopedHabits scope(habits);
            code = Call(run, arguments);
        }
        result.push_back({"code", std::to_string(code), true});
        if (run.asksForDose) result.push_back({"dose", Dose(), true});
    }
    result.push_back({"input", BytesOf(input)});
    result.push_back({"output", BytesOf(output)});
    for (LeftFile& file : folder.LeftFiles()) {
        const bool isText = file.name.ends_with(".txt") || file.name.ends_with(".ini");
        result.push_back({"file " + file.name, std::move(file.bytes), isText});
    }
    return result;
}

std::string HashOf(const RunResult& result) {
    Sha256 hash;
    for (const ResultPart& part : result) {
        hash.AddPiece(part.name);
        hash.AddPiece(part.bytes);
    }
    return hash.Finish();
}

}  // namespace vastrelline::digest
