// SPDX-License-Identifier: Apache-2.0
#include "runs/LookAtFrame.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

constexpr int kFullBits = 16;

// The mean difference between pixels that lie one above the other in rows of this width.
double RowDifference(const std::vector<uint16_t>& pixels, size_t width) {
    if (pixels.size() <= width) return 0.0;
    uint64_t sum = 0;
    for (size_t i = width; i < pixels.size(); ++i)
        sum += static_cast<uint64_t>(std::abs(int32_t{pixels[i]} - int32_t{pixels[i - width]}));
    return static_cast<double>(sum) / static_cast<double>(pixels.size() - width);
}

bool IsSwappedSensorSize(FrameSize size, const ProfileFile& file) {
    return size.width != size.height && FindSensorSize(file) == FrameSize{size.height, size.width};
}

Finding Warning(const std::string& path, std::string text, std::string rule) {
    return {Severity::Warning, path, 0, 1, std::move(text), std::move(rule)};
}

}  // namespace

std::optional<FrameSize> FindSensorSize(const ProfileFile& file) {
    const auto read = [&file](std::string_view key) {
        return int64_t{ReadIntegerKey(file, kSensorSectionName, key, 0)};
    };
    const int64_t width = read("FrameWidth") - read("ImgCutLeft") - read("ImgCutRight");
    const int64_t height = read("FrameHeight") - read("ImgCutTop") - read("ImgCutBottom");
    const auto fits = [](int64_t side) { return side > 0 && side <= INT32_MAX; };
    if (!fits(width) || !fits(height)) return std::nullopt;
    const FrameSize size{static_cast<int32_t>(width), static_cast<int32_t>(height)};
    return IsUsableSize(size) ? std::optional(size) : std::nullopt;
}

bool LooksSwapped(const Frame& frame) {
    // A frame that is cut wrongly shears: neighbours one above the other are strangers. Three times is far
    // from what the two directions of a radiograph differ by.
    constexpr double kClearly = 3.0;
    if (frame.width == frame.height || frame.width < 2 || frame.height < 2) return false;
    const double asRead = RowDifference(frame.pixels, static_cast<size_t>(frame.width));
    const double swapped = RowDifference(frame.pixels, static_cast<size_t>(frame.height));
    return asRead > kClearly * swapped;
}

std::vector<Finding> LookAtFrame(const LookedAtFrame& looked, const ProfileFile& file,
                                 std::string_view section) {
    std::vector<Finding> findings;
    const Frame& frame = looked.frame;
    constexpr int32_t kUsualBits = 12;
    const int32_t bits = std::clamp(ReadIntegerKey(file, section, "BITSTORED", kUsualBits), 0, kFullBits);
    const int32_t top = (1 << bits) - 1;
    const int32_t greatest =
        frame.pixels.empty() ? 0 : *std::max_element(frame.pixels.begin(), frame.pixels.end());
    if (looked.sourceBits < kFullBits)
        findings.push_back(Warning(looked.path,
                                   "has levels of " + std::to_string(looked.sourceBits) +
                                       " bits, which the chains take for a nearly black frame; export the "
                                       "frame with 16 bits",
                                   "few-bits"));
    else if (greatest > top)
        findings.push_back(
            Warning(looked.path,
                    "its brightest level " + std::to_string(greatest) + " lies above " + std::to_string(top) +
                        ", the top of BITSTORED=" + std::to_string(bits) + " in section '" +
                        std::string(section) + "'; levels above are cut, so set BITSTORED or scale the frame",
                    "above-bits"));
    const FrameSize size{frame.width, frame.height};
    if (IsSwappedSensorSize(size, file) || LooksSwapped(frame))
        findings.push_back(Warning(looked.path,
                                   "looks like " + FormatFrameSize({size.height, size.width}) + ", not " +
                                       FormatFrameSize(size) + "; were width and height swapped?",
                                   "swapped-size"));
    return findings;
}

std::vector<Finding> LookAtResult(const std::string& where, const std::vector<uint16_t>& pixels) {
    if (pixels.empty()) return {};
    const auto [least, greatest] = std::minmax_element(pixels.begin(), pixels.end());
    if (*greatest == 0)
        return {Warning(where,
                        "the result is black everywhere; look at the stages, the exposure and "
                        "SATURATION_VALUE",
                        "black-result")};
    if (*least == *greatest)
        return {Warning(where, "the result is the one level " + std::to_string(*least) + " everywhere",
                        "flat-result")};
    return {};
}

}  // namespace vastrelline
