#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "pixels/FrameView.h"

namespace vastrelline {

// A frame on its way through several level curves. What a curve is built from (counts, lowest and highest
// level) follows from the counts of before and the last curve, so the pixels are read once to count them and
// once to map them, however many curves there are.
class PlannedCurves {
public:
    // Counts the frame, which must outlive the plan. Nobody else may change it meanwhile.
    explicit PlannedCurves(const FrameView<uint16_t>& frame);

    const FrameView<uint16_t>& Frame() const { return frame_; }

    // The frame as the curves so far will leave it.
    int32_t MinLevel() const;                                          // as MinPixel
    int32_t MaxLevel() const;                                          // as MaxPixel
    std::vector<uint32_t> Histogram(int32_t maxValue) const;           // as BuildHistogram
    std::vector<uint32_t> UnclampedHistogram(int32_t maxValue) const;  // as BuildUnclampedHistogram

    // Plans a curve behind those so far. A level beyond the table takes the last entry; an empty table does
    // nothing.
    void Add(std::span<const uint16_t> table);

    // Maps the pixels through what is planned and not applied yet.
    void Apply();

private:
    FrameView<uint16_t> frame_;
    std::vector<uint32_t> counts_;     // of all levels of 16 bits
    std::vector<uint16_t> unapplied_;  // where the levels of the frame's pixels go; empty if they stay
};

}  // namespace vastrelline
