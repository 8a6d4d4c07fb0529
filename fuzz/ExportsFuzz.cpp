// Any profile text, a small frame and any export: no crash, no hang, and a code that the header lists. The
// input's last bytes pick the options, what stands before them is the profile, and the sensor's profile too.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "config/SensorSettings.h"
#include "platform/MessageDialog.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace {

using vastrelline::MessageIcon;
using vastrelline::SetMessageHandler;
using vastrelline::SetSensorProfileRoot;
using vastrelline::TemporaryFolder;
using vastrelline::WriteBytes;

constexpr size_t kLongestProfile = 4096;
constexpr size_t kTailSize = 8;
constexpr int32_t kSidesMask = 31;
constexpr const char* kSections[] = {"General", "Settings", "", "S"};
constexpr size_t kExportCount = 8;

// A run writes where the profile tells it to. It may do so only in a folder of its own: that is the current
// one during a call, and no text of the profile holds a separator that would lead out of it.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path before_;
};

std::string WithoutSeparators(const uint8_t* bytes, size_t count) {
    std::string text(bytes, bytes + count);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '/' || c == '\\'; }, '_');
    return text;
}

void Require(bool isTrue) {
    if (!isTrue) std::abort();
}

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < kTailSize) return 0;
    const uint8_t* const tail = data + (size - kTailSize);
    const size_t index = tail[0] % kExportCount;
    const int32_t width = tail[1] & kSidesMask;
    const int32_t height = tail[2] & kSidesMask;
    const uint8_t options = tail[3];
    const char* const section = kSections[tail[4] % std::size(kSections)];
    const SensorGeometry geometry{tail[5] & 3, tail[6] & 3, tail[5], tail[6], width,
                                  height,      tail[7],     tail[5], tail[6], tail[7]};

    // Blocks of exactly the frame's size, so that a sanitizer sees a read or write past the end.
    const size_t pixelCount = static_cast<size_t>(width) * static_cast<size_t>(height);
    std::vector<uint16_t> input(pixelCount);
    for (size_t i = 0; i < pixelCount; ++i) {
        input[i] = static_cast<uint16_t>(data[i % size] | (data[(3 * i + 1) % size] << 8U));
    }
    std::vector<uint16_t> output(pixelCount);

    const TemporaryFolder folder;
    const size_t profileSize = std::min(size - kTailSize, kLongestProfile);
    const std::string profile = WithoutSeparators(data, profileSize);
    WriteBytes(folder.Path() / "profile.ini", profile);
    WriteBytes(folder.Path() / "Brindmap.ini", profile);
    const CurrentFolder current(folder.Path());
    // A sensor that does not fit brings a message at every call; nobody reads it here.
    SetSensorProfileRoot(L".");
    SetMessageHandler([](const std::wstring&, MessageIcon) {});
    const int32_t code =
        CallExport(index, input.data(), output.data(), width, height, section, options, geometry);
    Require(code >= VASTRELLINE_OK && code <= VASTRELLINE_INTERNAL_FAILURE);
    return 0;
}
