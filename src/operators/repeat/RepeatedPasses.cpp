// SPDX-License-Identifier: Apache-2.0
#include "operators/repeat/RepeatedPasses.h"

#include <algorithm>
#include <cstddef>

#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// Tells whether a pass changed anything, from a few rows that it keeps: nearly every pass changes one of
// them. After one that did not it keeps the whole frame.
class StillnessWatch {
public:
    explicit StillnessWatch(const FrameView<uint16_t>& frame) : frame_(frame) {}

    void BeginPass() {
        constexpr int32_t kFewRows = 16;
        step_ = mayBeStill_ ? 1 : std::max(frame_.Height() / kFewRows, 1);
        kept_.clear();
        for (int32_t y = 0; y < frame_.Height(); y += step_)
            kept_.insert(kept_.end(), frame_.Row(y), frame_.Row(y) + frame_.Width());
    }

    bool HasChangedNothing() {
        const uint16_t* kept = kept_.data();
        mayBeStill_ = true;
        for (int32_t y = 0; y < frame_.Height() && mayBeStill_; y += step_, kept += frame_.Width())
            mayBeStill_ = std::equal(kept, kept + frame_.Width(), frame_.Row(y));
        return mayBeStill_ && step_ == 1;
    }

private:
    FrameView<uint16_t> frame_;
    int32_t step_ = 1;
    bool mayBeStill_ = false;
    ScratchVector<uint16_t> kept_;  // every step_-th row
};

}  // namespace

// Circles of more than one frame are found by Brent's search (1980): the frame is compared with one mark,
// which is set anew when the number of passes has doubled. So the mark comes to lie in the circle, whatever
// its length, and no more passes run than twice those that the circle is away.
void RepeatPasses(const FrameView<uint16_t>& frame, int32_t count, const std::function<void()>& pass) {
    // No usual number of passes pays for the mark.
    constexpr int32_t kFirstMark = 8;
    if (frame.Count() == 0) return;
    StillnessWatch watch(frame);
    ScratchVector<uint16_t> mark;
    int32_t markedAt = 0;
    for (int32_t done = 0; done < count; ++done) {
        if (done > markedAt && !mark.empty() && std::equal(mark.begin(), mark.end(), frame.begin())) {
            const int32_t period = done - markedAt;
            for (int32_t rest = (count - done) % period; rest > 0; --rest) pass();
            return;
        }
        if (done == kFirstMark || (!mark.empty() && done - markedAt == markedAt)) {
            mark.assign(frame.begin(), frame.end());
            markedAt = done;
        }
        const bool isLast = done == count - 1;
        if (!isLast) watch.BeginPass();
        pass();
        if (!isLast && watch.HasChangedNothing()) return;
    }
}

}  // namespace vastrelline
