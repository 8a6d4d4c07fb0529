// SPDX-License-Identifier: Apache-2.0
#include "formats/PgmFormat.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "frames/FrameSize.h"

namespace vastrelline {
namespace {

constexpr int32_t kTopOfOneByte = 255;
constexpr int32_t kTopOfTwoBytes = 65535;

std::runtime_error NoSense() { return std::runtime_error("the head of the PGM file makes no sense"); }

bool IsBlank(uint8_t c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Walks through the head: numbers, blanks, and comments from # to the end of a line.
class HeadReader {
public:
    explicit HeadReader(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}

    int32_t ReadNumber() {
        SkipBlanks();
        const size_t start = position_;
        int64_t value = 0;
        while (!AtEnd() && bytes_[position_] >= '0' && bytes_[position_] <= '9') {
            value = value * 10 + (bytes_[position_++] - '0');
            if (value > INT32_MAX) throw NoSense();
        }
        if (position_ == start) throw NoSense();
        return static_cast<int32_t>(value);
    }

    // The levels begin after the one blank that ends the last number.
    size_t StartOfLevels() {
        if (AtEnd() || !IsBlank(bytes_[position_])) throw NoSense();
        return position_ + 1;
    }

private:
    bool AtEnd() const { return position_ >= bytes_.size(); }

    void SkipBlanks() {
        while (!AtEnd()) {
            if (bytes_[position_] == '#') {
                while (!AtEnd() && bytes_[position_] != '\n' && bytes_[position_] != '\r') ++position_;
            } else if (IsBlank(bytes_[position_])) {
                ++position_;
            } else {
                return;
            }
        }
    }

    const std::vector<uint8_t>& bytes_;
    size_t position_ = 2;  // past the magic "P5"
};

}  // namespace

DecodedFrame DecodePgm(const std::vector<uint8_t>& bytes) {
    if (bytes.size() < 3 || bytes[0] != 'P' || bytes[1] != '5' || !(IsBlank(bytes[2]) || bytes[2] == '#'))
        throw std::runtime_error("the file is no binary PGM (P5)");
    HeadReader head(bytes);
    const int32_t width = head.ReadNumber();
    const int32_t height = head.ReadNumber();
    const int32_t top = head.ReadNumber();
    const size_t start = head.StartOfLevels();
    if (top < 1 || top > kTopOfTwoBytes) throw NoSense();
    if (!IsUsableSize({width, height}))
        throw std::runtime_error("the PGM file tells an unusable size, " + FormatFrameSize({width, height}));

    const size_t bytesPerLevel = top > kTopOfOneByte ? 2 : 1;
    const size_t count = PixelCount(width, height);
    if (bytes.size() - start != count * bytesPerLevel)
        throw std::runtime_error("the PGM file of " + FormatFrameSize({width, height}) + " should hold " +
                                 std::to_string(count * bytesPerLevel) + " bytes of levels, it holds " +
                                 std::to_string(bytes.size() - start));
    DecodedFrame frame{{width, height, std::vector<uint16_t>(count)}, bytesPerLevel == 1 ? 8 : 16, {}};
    for (size_t i = 0; i < count; ++i) {
        const size_t at = start + i * bytesPerLevel;
        frame.pixels[i] =
            bytesPerLevel == 1 ? bytes[at] : static_cast<uint16_t>((bytes[at] << 8) | bytes[at + 1]);
    }
    return frame;
}

std::vector<uint8_t> EncodePgm(const Frame& frame, int32_t topLevel) {
    const bool fits = topLevel > kTopOfOneByte && topLevel < kTopOfTwoBytes &&
                      std::none_of(frame.pixels.begin(), frame.pixels.end(),
                                   [topLevel](uint16_t pixel) { return pixel > topLevel; });
    const std::string head = "P5\n" + std::to_string(frame.width) + " " + std::to_string(frame.height) +
                             "\n" + std::to_string(fits ? topLevel : kTopOfTwoBytes) + "\n";
    std::vector<uint8_t> bytes(head.begin(), head.end());
    bytes.reserve(head.size() + 2 * frame.pixels.size());
    for (const uint16_t pixel : frame.pixels) {
        bytes.push_back(static_cast<uint8_t>(pixel >> 8));
        bytes.push_back(static_cast<uint8_t>(pixel & 0xFF));
    }
    return bytes;
}

}  // namespace vastrelline
