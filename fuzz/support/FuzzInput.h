// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vastrelline {

// Says which promise does not hold and ends the run, in every build.
inline void Require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", promise);
    std::abort();
}

// A fuzzer's input, whose head is the frame and whose tail picks size and options, so that a change of the
// options leaves the pixels where they are. Values are taken off the end; past the start they are zero.
class InputTail {
public:
    InputTail(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    template <typename Value>
    Value Take() {
        Value value{};
        const size_t count = std::min(size_, sizeof value);
        size_ -= count;
        if (count > 0) std::memcpy(&value, data_ + size_, count);
        return value;
    }

    // The pixels from the head; where the input is too short, they are 0.
    std::vector<uint16_t> TakeFrame(int32_t width, int32_t height) const {
        std::vector<uint16_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
        const size_t bytes = std::min(size_, pixels.size() * sizeof(uint16_t));
        if (bytes > 0) std::memcpy(pixels.data(), data_, bytes);
        return pixels;
    }

    // What is left of the input.
    const uint8_t* Data() const { return data_; }
    size_t Size() const { return size_; }

private:
    const uint8_t* data_;
    size_t size_;
};

}  // namespace vastrelline
