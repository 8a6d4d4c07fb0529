// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/Frames.h"

namespace vastrelline {

// A number of `size` bytes in a file, low byte first.
inline uint32_t NumberAt(const std::string& bytes, size_t offset, size_t size) {
    uint32_t number = 0;
    for (size_t i = size; i-- > 0;) number = number * 256 + static_cast<unsigned char>(bytes.at(offset + i));
    return number;
}

// The grey levels of an 8-bit bitmap's bytes, the top row first. Every field, the palette and the zeros
// behind each row are looked at; whatever is not as in a grey bitmap without compression throws.
inline Frame ReadGreyBitmap(const std::string& bytes) {
    const auto require = [](bool isRight, const char* what) {
        if (!isRight) throw std::runtime_error(std::string("the bitmap has a wrong ") + what);
    };
    require(bytes.size() >= 1078 && bytes.substr(0, 2) == "BM", "start");
    const uint32_t width = NumberAt(bytes, 18, 4);
    const uint32_t height = NumberAt(bytes, 22, 4);
    const size_t rowBytes = (size_t{width} + 3) / 4 * 4;
    require(bytes.size() == 1078 + rowBytes * height, "length");
    struct Field {
        size_t offset;
        size_t size;
        uint32_t value;
        const char* name;
    };
    for (const Field& field : {Field{2, 4, static_cast<uint32_t>(bytes.size()), "file size"},
                               {6, 2, 0, "first reserved field"},
                               {8, 2, 0, "second reserved field"},
                               {10, 4, 1078, "offset of the pixels"},
                               {14, 4, 40, "header size"},
                               {26, 2, 1, "number of planes"},
                               {28, 2, 8, "number of bits"},
                               {30, 4, 0, "compression"},
                               {34, 4, 0, "image size"},
                               {38, 4, 0, "horizontal resolution"},
                               {42, 4, 0, "vertical resolution"},
                               {46, 4, 256, "number of colours"},
                               {50, 4, 0, "number of important colours"}})
        require(NumberAt(bytes, field.offset, field.size) == field.value, field.name);
    for (size_t i = 0; i < 256; ++i) {
        const char grey = static_cast<char>(i);
        require(bytes.substr(54 + 4 * i, 4) == std::string{grey, grey, grey, '\0'}, "palette");
    }
    std::vector<uint16_t> pixels;
    for (size_t y = height; y-- > 0;) {
        const std::string row = bytes.substr(1078 + y * rowBytes, rowBytes);
        for (size_t x = 0; x < width; ++x) pixels.push_back(static_cast<unsigned char>(row[x]));
        require(row.find_first_not_of('\0', width) == std::string::npos, "padding");
    }
    return {static_cast<int32_t>(width), static_cast<int32_t>(height), std::move(pixels)};
}

// What the window of centre 2047 and width 4096 makes of a frame. It begins at level 0 and its slope is
// 255 / 4096, which a double holds exactly: so whole numbers tell the rounded level.
inline Frame ThroughUsualWindow(Frame frame) {
    for (uint16_t& pixel : frame.pixels)
        pixel = static_cast<uint16_t>(pixel >= 4095 ? 255 : (255 * pixel + 2048) / 4096);
    return frame;
}

}  // namespace vastrelline
