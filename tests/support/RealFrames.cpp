// SPDX-License-Identifier: Apache-2.0
#include "support/RealFrames.h"

#include <algorithm>
#include <stdexcept>

#include "support/PngFrame.h"
#include "support/SourceTree.h"

namespace vastrelline {
namespace {

Frame ReadFrame(const char* name) { return ReadPngFrame(SourceTreeFolder() / "tests/data/frames" / name); }

}  // namespace

Frame ReadBitewing() { return ReadFrame("bitewing_1300x1668.png"); }
Frame ReadPeriapical() { return ReadFrame("periapical_a_1012x1316.png"); }

Frame ReadPieceOfBitewing(int32_t width, int32_t height) {
    constexpr int32_t kLeft = 650;
    constexpr int32_t kTop = 480;
    const Frame whole = ReadBitewing();
    if (width > whole.width || height > whole.height) throw std::invalid_argument("larger than the bitewing");
    const int32_t left = std::min(kLeft, whole.width - width);
    const int32_t top = std::min(kTop, whole.height - height);
    Frame piece(width, height);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) piece.At(x, y) = whole.At(left + x, top + y);
    return piece;
}

Frame Weakened(Frame frame) {
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(pixel / 8);
    return frame;
}

Frame WithBlackCorners(Frame frame) {
    constexpr int32_t kRadius = 150;
    // In halves of a pixel, so that the middle of a pixel is a whole number.
    const auto distance = [](int32_t index) { return 2 * (kRadius - index) - 1; };
    for (int32_t y = 0; y < kRadius; ++y)
        for (int32_t x = 0; x < kRadius; ++x) {
            if (distance(x) * distance(x) + distance(y) * distance(y) <= 4 * kRadius * kRadius) continue;
            const int32_t row = frame.height - 1 - y;
            frame.At(x, row) = 0;
            frame.At(frame.width - 1 - x, row) = 0;
        }
    return frame;
}

std::vector<std::pair<std::string, Frame>> ReadRealFrames() {
    const Frame bitewing = ReadBitewing();
    const Frame periapical = ReadPeriapical();
    return {{"bitewing", bitewing},
            {"weak bitewing", Weakened(bitewing)},
            {"bitewing with corners", WithBlackCorners(bitewing)},
            {"periapical", periapical},
            {"periapical with corners", WithBlackCorners(periapical)}};
}

}  // namespace vastrelline
