#pragma once

#include <cstdint>

#include "entry/ProfileFolder.h"
#include "support/Frames.h"

namespace vastrelline {

// The elementary functions on Windows differ in the last bit of some arguments, and with them a few pixels by
// a level: hashes of whole chains hold elsewhere.
#ifdef _WIN32
inline constexpr bool kHasUsualFunctions = false;
#else
inline constexpr bool kHasUsualFunctions = true;
#endif

// FNV-1a of 64 bits over the bytes of the pixels, low byte first.
inline uint64_t HashOf(const Frame& frame) {
    uint64_t hash = 14695981039346656037U;
    for (const char byte : RawBytes(frame.pixels)) {
        hash = (hash ^ static_cast<uint8_t>(byte)) * 1099511628211U;
    }
    return hash;
}

// Pixel (x, y) holds (x * 113 + y * 271 + x * y * 7) modulo 4096.
inline Frame MadeFrame() {
    Frame frame(131, 97);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x)
            frame.At(x, y) = static_cast<uint16_t>((x * 113 + y * 271 + x * y * 7) % 4096);
    return frame;
}

}  // namespace vastrelline
