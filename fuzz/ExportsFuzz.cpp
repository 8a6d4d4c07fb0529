// SPDX-License-Identifier: Apache-2.0

// Any profile text, a small frame and any export: no crash, no hang, a code that the header lists, and the
// same result under every instruction set. The input's last bytes pick the options, what stands before them
// is the profile, and the sensor's profile too. Files exist in memory only, so that the profile may send them
// anywhere.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "config/SensorSettings.h"
#include "platform/InstructionSet.h"
#include "platform/memory/MemoryFiles.h"
#include "support/FuzzInput.h"
#include "vastrelline.h"

namespace {

using vastrelline::InstructionSet;
using vastrelline::MemoryFiles;
using vastrelline::Require;
using vastrelline::ScopedInstructionSet;
using vastrelline::SetSensorProfileRoot;

constexpr size_t kLongestProfile = 4096;
constexpr size_t kTailSize = 8;
constexpr int32_t kSidesMask = 31;
constexpr uint8_t kTryPlainForms = 32;
constexpr uint8_t kCallTwice = 64;
constexpr const char* kSections[] = {"General", "Settings", "", "S"};
constexpr size_t kExportCount = 8;

int32_t CallExport(size_t index, uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                   const char* section, uint8_t options, const SensorGeometry& geometry) {
    const char* const profile = (options & 1U) != 0 ? "profile.ini" : "missing.ini";
    const char* const bitmap = (options & 2U) != 0 ? "picture.bmp" : nullptr;
    const auto mapping = static_cast<uint8_t>(options & 4U);
    const auto spots = static_cast<uint8_t>(options & 8U);
    const SensorGeometry* const given = (options & 16U) != 0 ? &geometry : nullptr;
    switch (index) {
        case 0:
            return ImageProcessing(input, output, width, height, profile, section, mapping, spots);
        case 1:
            return ImageProcessingS(input, output, width, height, profile, section, mapping, spots, given);
        case 2:
            return ImageProcessing_N(input, width, height, profile, section, mapping, spots, bitmap);
        case 3:
            return ImageProcessing_NS(input, width, height, profile, section, mapping, spots, bitmap, given);
        case 4:
            return ImageProcessing_NE(input, width, height, profile, section, mapping, spots, bitmap, "s",
                                      geometry.Flip);
        case 5:
            return ImageProcessingCR(input, output, width, height, profile, section);
        case 6:
            return RotateImage(input, width, height, geometry.Rotation, geometry.Flip);
        default: {
            std::array<int32_t, 4> figures{};
            double ratio = 0.0;
            Getdose_ImageInfo(&figures[0], &figures[1], &figures[2], &ratio, &figures[3]);
            return VASTRELLINE_OK;
        }
    }
}

struct Call {
    size_t index;
    int32_t width;
    int32_t height;
    uint8_t options;
    const char* section;
    SensorGeometry geometry;
    std::string profile;
    std::vector<uint16_t> input;
};

struct Result {
    int32_t code;
    std::vector<uint16_t> input;
    std::vector<uint16_t> output;
    std::string profile;
    std::string bitmap;

    bool operator==(const Result&) const = default;
};

std::string BytesOf(const wchar_t* path) {
    const std::string* const file = MemoryFiles::Shared().Find(path);
    return file == nullptr ? std::string() : *file;
}

Result Run(const Call& call) {
    // Blocks of exactly the frame's size, so that a sanitizer sees a read or write past the end.
    Result result{0, call.input, std::vector<uint16_t>(call.input.size()), {}, {}};
    result.code = CallExport(call.index, result.input.data(), result.output.data(), call.width, call.height,
                             call.section, call.options, call.geometry);
    result.profile = BytesOf(L"profile.ini");
    result.bitmap = BytesOf(L"picture.bmp");
    return result;
}

Result RunFromTheStart(const Call& call, InstructionSet set) {
    MemoryFiles& files = MemoryFiles::Shared();
    files.Clear();
    files.Put(L"profile.ini", call.profile);
    files.Put(L"Brindmap.ini", call.profile);
    const ScopedInstructionSet limit(set);
    return Run(call);
}

void Test(const Call& call) {
    const Result result = RunFromTheStart(call, InstructionSet::Avx512);
    Require(result.code >= VASTRELLINE_OK && result.code <= VASTRELLINE_INTERNAL_FAILURE,
            "the header lists the code");
    if (result.code != VASTRELLINE_OK) Require(result.bitmap.empty(), "without success there is no bitmap");
    // What a call stores it does not store again, whatever else stands in the profile.
    if ((call.options & kCallTwice) != 0)
        Require(Run(call).profile == result.profile, "a second call has nothing new to store");
    // A code 6 leaves pixels without meaning.
    if ((call.options & kTryPlainForms) != 0 && result.code != VASTRELLINE_INTERNAL_FAILURE)
        Require(RunFromTheStart(call, InstructionSet::Reference) == result,
                "every set of instructions gives the bits of the plain forms");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < kTailSize) return 0;
    const uint8_t* const tail = data + (size - kTailSize);
    Call call{};
    call.index = tail[0] % kExportCount;
    call.width = tail[1] & kSidesMask;
    call.height = tail[2] & kSidesMask;
    call.options = tail[3];
    call.section = kSections[tail[4] % std::size(kSections)];
    call.geometry = {tail[5] & 3, tail[6] & 3, tail[5], tail[6], call.width,
                     call.height, tail[7],     tail[5], tail[6], tail[7]};
    call.profile.assign(data, data + std::min(size - kTailSize, kLongestProfile));
    call.input.resize(static_cast<size_t>(call.width) * static_cast<size_t>(call.height));
    for (size_t i = 0; i < call.input.size(); ++i)
        call.input[i] = static_cast<uint16_t>(data[i % size] | (data[(3 * i + 1) % size] << 8U));

    SetSensorProfileRoot(L".");
    Test(call);
    MemoryFiles::Shared().Clear();
    return 0;
}
