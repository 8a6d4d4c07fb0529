// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "operators/curves/TonedFrame.h"
#include "stages/stretch/HistogramSegments.h"
#include "stages/stretch/StretchParams.h"

namespace vastrelline {

// The modes of STRETCH_SEPARATION_CNT. In any other no curve is built.
enum class StretchMode : int32_t {
    WholeRange = 0,
    LeftValley = 1,
    BothValleys = 2,
    BothPercent = 3,  // this and those below in the configured chain alone
    LeftPercent = 4,
    RightPercent = 5,
};

// A stretch curve: the output of the levels 0..maxValue, of which a frame keeps the low 16 bits.
using StretchFunction = std::function<int32_t(int32_t level)>;

// A stretch curve, and the valleys that the log shows whether the curve used them or not.
struct SegmentCurve {
    StretchSegment segment;
    StretchFunction curve;
};

// Modes WholeRange to BothValleys in the configured chain: the frame's range is what is well occupied, and
// begins at level 0 whatever the frame.
SegmentCurve BuildSegmentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params);

// The same in the fixed chain: the range is that of the frame's pixels.
SegmentCurve BuildFixedSegmentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params);

// Modes BothPercent to RightPercent: one or both ends are the levels at which STRETCH_LIMITBIN percent of the
// pixels are passed from outside, -1 where they never are. The lengths stand as the keys give them.
StretchFunction BuildPercentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params);

// Marks the dark tail: gives 255 to the mask where a pixel lies strictly below `level`, and leaves the rest
// of it.
//
// tailMask   width * height values; must not overlap
void MarkDarkTail(const uint16_t* pixels, uint16_t* tailMask, int32_t width, int32_t height, int32_t level);

// The second step, after any mode: fills the range again, as RESTRETCH_OPTION says. False, and the frame as
// it was, for an option without a step.
bool AddRestretch(TonedFrame& frame, int32_t maxValue, int32_t option);

// Maps the frame through the curve. Pixels above maxValue take its entry.
void AddStretchCurve(TonedFrame& frame, int32_t maxValue, const StretchFunction& curve);

}  // namespace vastrelline
