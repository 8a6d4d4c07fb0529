// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace vastrelline {

// The levels between which the object lies: the valleys on both sides of a histogram's main peak.
struct StretchSegment {
    int32_t left = 0;
    int32_t right = 0;

    friend bool operator==(const StretchSegment&, const StretchSegment&) = default;
};

// Finds the lowest and the highest level that is well occupied: its count is not 0, and the average of its
// neighbourhood of 21 levels is above `limit`.
//
// maxValue   top level of the histogram, 0..65535; a pixel above it counts as maxValue
// limit      pixels, compared as a signed number
// low        searched from level 0 up; keeps its value if there is none
// top        searched from maxValue down to level 1; keeps its value if there is none
void FindOccupiedRange(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t limit,
                       int32_t& low, int32_t& top);

// The same in a histogram that is already there.
void FindOccupiedRange(std::span<const uint32_t> histogram, int32_t limit, int32_t& low, int32_t& top);

// Finds the two valleys that bound the main peak of the smoothed histogram. The darkest half percent of the
// pixels and the ten levels from the brightest one down take no part in it.
//
// maxValue                   top level of the histogram, 0..65535; a pixel above it counts as maxValue
// fallbackLow, fallbackTop   the valleys where none is found; fallbackTop is also where the search from
//                            above begins. Both 0: the frame's own ends take their place
// limit                      pixels, signed: a valley's smoothed count is below it, and not 0
// Returns                    1
int32_t FindStretchSegments(const uint16_t* pixels, StretchSegment& segment, int32_t width, int32_t height,
                            int32_t maxValue, int32_t fallbackLow, int32_t fallbackTop, int32_t limit);

// What FindStretchSegments looks at, counted once by a caller that has more use for it.
struct CountedFrame {
    int32_t width;
    int32_t height;
    int32_t minLevel;                     // of the frame's pixels, also above the histogram
    int32_t maxLevel;                     //
    std::span<const uint32_t> histogram;  // as BuildHistogram makes it; one bin or more
};

StretchSegment FindStretchSegments(const CountedFrame& frame, int32_t fallbackLow, int32_t fallbackTop,
                                   int32_t limit);

}  // namespace vastrelline
