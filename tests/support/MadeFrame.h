// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "support/Frames.h"
#include "support/ProfileFolder.h"

namespace vastrelline {

// The elementary functions on Windows differ in the last bit of some arguments, and with them a few pixels by
// a level: hashes of whole chains hold elsewhere.
#ifdef _WIN32
inline constexpr bool kHasUsualFunctions = false;
#else
inline constexpr bool kHasUsualFunctions = true;
#endif

// FNV-1a of 64 bits.
inline uint64_t HashOf(const std::string& bytes) {
    uint64_t hash = 14695981039346656037U;
    for (const char byte : bytes) hash = (hash ^ static_cast<uint8_t>(byte)) * 1099511628211U;
    return hash;
}

// Over the bytes of the pixels, low byte first.
inline uint64_t HashOf(const Frame& frame) { return HashOf(RawBytes(frame.pixels)); }

// Pixel (x, y) holds (x * 113 + y * 271 + x * y * 7) modulo 4096.
inline Frame MadeFrame() {
    Frame frame(131, 97);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x)
            frame.At(x, y) = static_cast<uint16_t>((x * 113 + y * 271 + x * y * 7) % 4096);
    return frame;
}

// Soft shapes of several sizes under noise, of 12 bits up to 180 x 150 pixels: something like a radiograph.
inline Frame MadeRadiograph(int32_t width, int32_t height) {
    Frame frame = Noise(width, height, 120, 11);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            int32_t level = 900 + 6 * x + 3 * y;
            if ((x - 60) * (x - 60) + (y - 70) * (y - 70) < 900) level -= 600;
            if ((x - 120) * (x - 120) + (y - 50) * (y - 50) < 400) level += 900;
            if (y > 110 && x % 40 < 6) level += 500;
            frame.At(x, y) = static_cast<uint16_t>(frame.At(x, y) + level);
        }
    }
    return frame;
}

}  // namespace vastrelline
