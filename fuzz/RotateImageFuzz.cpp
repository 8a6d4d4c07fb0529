// SPDX-License-Identifier: Apache-2.0

// RotateImage on small frames with any codes: it never leaves the frame, loses no pixel, and turns that
// belong together restore the frame; and every form of the quarter turn against its definition. The input's
// head is the frame, its tail picks size and codes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "sensor/QuarterTurn.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"
#include "vastrelline.h"

namespace {

constexpr size_t kTailSize = 10;  // two sides, then two codes of 32 bits
constexpr uint8_t kLargestSide = 70;

using vastrelline::Require;

struct Turned {
    std::vector<uint16_t> pixels;  // exactly of the frame's size, so that a sanitizer sees a step outside
    int32_t width;
    int32_t height;

    void Apply(int32_t rotation, int32_t flip) {
        Require(RotateImage(pixels.data(), width, height, rotation, flip) == 1, "a frame gives 1");
        if (rotation == 1 || rotation == 2) std::swap(width, height);
    }
};

void TestOneCall(const Turned& frame, int32_t rotation, int32_t flip) {
    Turned turned = frame;
    turned.Apply(rotation, flip);
    std::vector<uint16_t> before = frame.pixels;
    std::sort(before.begin(), before.end());
    std::vector<uint16_t> after = turned.pixels;
    std::sort(after.begin(), after.end());
    Require(before == after, "every pixel is still there");
    const bool isTurn = rotation >= 1 && rotation <= 3;
    const bool isFlip = flip >= 1 && flip <= 3;
    Require(isTurn || isFlip || turned.pixels == frame.pixels, "unknown codes do nothing");
}

void TestTurnsThatRestore(const Turned& frame) {
    Turned turned = frame;
    for (int i = 0; i < 4; ++i) turned.Apply(1, 0);
    Require(turned.pixels == frame.pixels, "four quarter turns clockwise restore the frame");
    for (int i = 0; i < 4; ++i) turned.Apply(2, 0);
    Require(turned.pixels == frame.pixels, "four quarter turns counterclockwise restore the frame");
    turned.Apply(1, 0);
    turned.Apply(2, 0);
    Require(turned.pixels == frame.pixels, "opposite turns restore the frame");
    turned.Apply(1, 0);
    turned.Apply(1, 0);
    turned.Apply(3, 0);
    Require(turned.pixels == frame.pixels, "two quarter turns and a half turn restore the frame");
    turned.Apply(3, 3);
    Require(turned.pixels == frame.pixels, "two half turns restore the frame");
    for (const int32_t flip : {1, 2, 3}) {
        turned.Apply(0, flip);
        turned.Apply(0, flip);
        Require(turned.pixels == frame.pixels, "two equal mirrors restore the frame");
    }
    turned.Apply(0, 1);
    turned.Apply(0, 2);
    turned.Apply(0, 3);
    Require(turned.pixels == frame.pixels, "both mirrors make a half turn");
}

void TestForms(const Turned& frame) {
    const auto width = static_cast<size_t>(frame.width);
    const auto height = static_cast<size_t>(frame.height);
    vastrelline::RequireEqualForms(
        vastrelline::TransposeVariants(), [&](const vastrelline::TransposeVariant& form) {
            vastrelline::Guarded<uint16_t> columns(frame.pixels.size());
            form.run({frame.pixels.data(), frame.width, columns.Data(), frame.height, width, height});
            return columns;
        });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < kTailSize) return 0;
    const uint8_t* const tail = data + (size - kTailSize);
    Turned frame{{}, tail[0] % (kLargestSide + 1), tail[1] % (kLargestSide + 1)};
    int32_t rotation = 0;
    int32_t flip = 0;
    std::memcpy(&rotation, tail + 2, sizeof rotation);
    std::memcpy(&flip, tail + 6, sizeof flip);

    const size_t count = static_cast<size_t>(frame.width) * static_cast<size_t>(frame.height);
    if (count == 0) {
        Require(RotateImage(nullptr, frame.width, frame.height, rotation, flip) == 0, "no frame gives 0");
        return 0;
    }
    frame.pixels.resize(count);
    frame.pixels.shrink_to_fit();
    // Where the input is too short, pixels are numbered, so that each one differs.
    for (size_t i = 0; i < count; ++i) frame.pixels[i] = static_cast<uint16_t>(i);
    std::memcpy(frame.pixels.data(), data, std::min(size - kTailSize, count * sizeof(uint16_t)));
    TestOneCall(frame, rotation, flip);
    TestTurnsThatRestore(frame);
    TestForms(frame);
    return 0;
}
