// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"

namespace vastrelline {

// A frame on its way through level curves. What a curve is built from (counts, lowest and highest level)
// follows from the counts of before and the last curve, so the pixels are read once to count them and once to
// map them, however many curves there are. They stay as they were until somebody asks for them.
class TonedFrame {
public:
    // The frame is mapped in place. It must outlive this, and nobody else may change it meanwhile.
    explicit TonedFrame(const FrameView<uint16_t>& pixels);

    // A copy of `source`, which goes to `pixels` of the same size when it is first asked for its pixels: one
    // pass maps both. Until then neither may `source` change or be asked for its own.
    //
    // pixels   must not overlap those of `source`
    TonedFrame(TonedFrame& source, const FrameView<uint16_t>& pixels);

    int32_t Width() const { return pixels_.Width(); }
    int32_t Height() const { return pixels_.Height(); }
    size_t Count() const { return pixels_.Count(); }

    // The frame as the curves so far will leave it. What is not known yet is counted.
    int32_t MinLevel();                                          // as MinPixel
    int32_t MaxLevel();                                          // as MaxPixel
    std::vector<uint32_t> Histogram(int32_t maxValue);           // as BuildHistogram
    std::vector<uint32_t> UnclampedHistogram(int32_t maxValue);  // as BuildUnclampedHistogram

    // Whether the counts are known, so that a curve built from them costs no pass.
    bool IsCounted() const { return counts_.has_value(); }

    // Adds a curve behind those so far. A level beyond the table takes the last entry; an empty table does
    // nothing.
    void Map(std::span<const uint16_t> table);

    // The same by a function of the level, uint16_t(int32_t). It need not be asked for levels that the frame
    // does not hold.
    template <typename Curve>
    void MapBy(const Curve& curve);

    // Copies pixels to other places of their row. Such an edit gives the same before and after a curve, and
    // waits with the curves.
    //
    // rows   that it changes, each once
    // edit   changes a row of this frame or a copy of one; must stay callable until pixels are asked for
    void Rearrange(std::vector<int32_t> rows, std::function<void(uint16_t* row, int32_t y)> edit);

    // The pixels, mapped through all curves: to look at, or to change, after which nothing is known of them.
    FrameView<const uint16_t> Read();
    FrameView<uint16_t> Change();

    // Writes the pixels, mapped, to rows that lie `stride` pixels apart. They stay and the curves wait.
    void CopyTo(uint16_t* rows, size_t stride);

    // The place of the pixels for who writes all of them: neither they nor the curves are needed any more.
    FrameView<uint16_t> Replace();

private:
    FrameView<const uint16_t> Stored() const;
    const std::vector<uint32_t>& StoredCounts();
    const std::vector<uint32_t>& Counts();
    const PixelRange& Range();
    void ForgetLevels();
    void Apply();
    void TakeFromSource();

    FrameView<uint16_t> pixels_;
    TonedFrame* source_ = nullptr;                 // where the pixels still lie; null once they are here
    std::vector<uint16_t> curve_;                  // from stored to mapped levels; empty if they are the same
    std::optional<std::vector<uint32_t>> counts_;  // of the stored levels, as far as there are any
    std::optional<std::vector<uint32_t>> mappedCounts_;  // of the mapped levels, if somebody has asked
    std::optional<PixelRange> range_;                    // of the mapped levels
    std::vector<int32_t> rearrangedRows_;                // on their way here
    std::function<void(uint16_t* row, int32_t y)> rearrangement_;
};

template <typename Curve>
void TonedFrame::MapBy(const Curve& curve) {
    const PixelRange range = Range();
    if (range.smallest > range.largest) return;
    // A small frame holds few of its levels.
    const bool isSparse = Count() < static_cast<size_t>(range.largest - range.smallest);
    const uint32_t* const counts = isSparse ? Counts().data() : nullptr;
    std::vector<uint16_t> table(static_cast<size_t>(range.largest) + 1, curve(range.smallest));
    for (int32_t level = range.smallest; level <= range.largest; ++level) {
        if (!isSparse || counts[level] != 0) table[static_cast<size_t>(level)] = curve(level);
    }
    Map(table);
}

}  // namespace vastrelline
