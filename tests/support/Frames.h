// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vastrelline {

// A frame that a test owns. The block has exactly width * height pixels, so that a sanitizer sees a read
// past its end.
struct Frame {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint16_t> pixels;

    Frame(int32_t frameWidth, int32_t frameHeight)
        : width(frameWidth),
          height(frameHeight),
          pixels(static_cast<size_t>(frameWidth) * static_cast<size_t>(frameHeight)) {}

    // All pixels, rows from the top; their number must fit the size.
    Frame(int32_t frameWidth, int32_t frameHeight, std::vector<uint16_t> framePixels)
        : width(frameWidth), height(frameHeight), pixels(std::move(framePixels)) {
        if (pixels.size() != static_cast<size_t>(width) * static_cast<size_t>(height))
            throw std::invalid_argument("the pixels do not fit the size of the frame");
        pixels.shrink_to_fit();
    }

    // The same with pixels from elsewhere.
    template <typename Allocator>
    Frame(int32_t frameWidth, int32_t frameHeight, const std::vector<uint16_t, Allocator>& framePixels)
        : Frame(frameWidth, frameHeight, std::vector<uint16_t>(framePixels.begin(), framePixels.end())) {}

    uint16_t& At(int32_t x, int32_t y) { return pixels.at(IndexOf(x, y)); }
    uint16_t At(int32_t x, int32_t y) const { return pixels.at(IndexOf(x, y)); }
    uint16_t* Data() { return pixels.data(); }
    const uint16_t* Data() const { return pixels.data(); }

    friend bool operator==(const Frame&, const Frame&) = default;

private:
    size_t IndexOf(int32_t x, int32_t y) const {
        if (x < 0 || x >= width || y < 0 || y >= height) throw std::out_of_range("no pixel of the frame");
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
};

// How a failed assertion shows a frame: small ones row by row, of others the size.
inline void PrintTo(const Frame& frame, std::ostream* out) {
    constexpr size_t kMostPixelsShown = 64;
    *out << frame.width << " x " << frame.height << " frame";
    if (frame.pixels.size() > kMostPixelsShown) return;
    for (int32_t y = 0; y < frame.height; ++y) {
        *out << (y == 0 ? " {" : " / ");
        for (int32_t x = 0; x < frame.width; ++x) *out << (x == 0 ? "" : " ") << frame.At(x, y);
    }
    if (frame.height > 0) *out << '}';
}

// A frame written out row by row.
inline Frame FromRows(std::initializer_list<std::initializer_list<uint16_t>> rows) {
    std::vector<uint16_t> pixels;
    for (const std::initializer_list<uint16_t> row : rows) {
        if (row.size() != rows.begin()->size()) throw std::invalid_argument("rows of unequal length");
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    const size_t width = rows.size() == 0 ? 0 : rows.begin()->size();
    return {static_cast<int32_t>(width), static_cast<int32_t>(rows.size()), std::move(pixels)};
}

// One level everywhere.
inline Frame Flat(int32_t width, int32_t height, uint16_t level) {
    Frame frame(width, height);
    std::fill(frame.pixels.begin(), frame.pixels.end(), level);
    return frame;
}

// Pixel (x, y) holds start + x * stepX + y * stepY, modulo 65536.
inline Frame Ramp(int32_t width, int32_t height, int32_t start, int32_t stepX, int32_t stepY) {
    Frame frame(width, height);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            frame.At(x, y) = static_cast<uint16_t>((start + x * stepX + y * stepY) & 0xFFFF);
    return frame;
}

// One level everywhere but at one pixel.
inline Frame Impulse(int32_t width, int32_t height, int32_t x, int32_t y, uint16_t peak,
                     uint16_t background = 0) {
    Frame frame = Flat(width, height, background);
    frame.At(x, y) = peak;
    return frame;
}

// Noise over 0..maxValue, the same on every machine: the generator's raw output is fixed by the language,
// what its distributions make of it is not.
inline Frame Noise(int32_t width, int32_t height, uint16_t maxValue, uint32_t seed) {
    Frame frame(width, height);
    std::mt19937 random(seed);
    for (uint16_t& pixel : frame.pixels)
        pixel = static_cast<uint16_t>((random() >> 8U) % (uint32_t{maxValue} + 1));
    return frame;
}

inline Frame MirrorLeftRight(const Frame& frame) {
    Frame mirrored(frame.width, frame.height);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) mirrored.At(frame.width - 1 - x, y) = frame.At(x, y);
    return mirrored;
}

inline Frame MirrorTopBottom(const Frame& frame) {
    Frame mirrored(frame.width, frame.height);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) mirrored.At(x, frame.height - 1 - y) = frame.At(x, y);
    return mirrored;
}

}  // namespace vastrelline
