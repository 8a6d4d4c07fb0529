// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "stages/pyramid/PyramidObserver.h"
#include "support/Frames.h"

namespace vastrelline {

// Keeps all that a pyramid shows.
class SeenPyramid : public PyramidObserver {
public:
    void SeeFrame(const std::wstring& name, const uint16_t* pixels, int32_t width, int32_t height) override {
        names.push_back(name);
        Frame frame(width, height);
        frame.pixels.assign(pixels, pixels + frame.pixels.size());
        frames.insert_or_assign(name, frame);
    }

    void SeeResponse(const std::wstring& name, int32_t first, std::span<const int32_t> responses) override {
        names.push_back(name);
        firstValue = first;
        response.assign(responses.begin(), responses.end());
    }

    std::vector<std::wstring> names;       // in their order
    std::map<std::wstring, Frame> frames;  // the last one of each name
    int32_t firstValue = 0;                // of the last response
    std::vector<int32_t> response;
};

}  // namespace vastrelline
