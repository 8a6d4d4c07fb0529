#include "stages/median/RepeatedPasses.h"

#include <algorithm>
#include <vector>

namespace vastrelline {

// Brent's search for a cycle (1980): the frame is compared with one mark, which is set anew when the number
// of passes has doubled. So the mark comes to lie in the circle, whatever its length, and no more passes run
// than twice those that the circle is away.
void RepeatPasses(const FrameView<uint16_t>& frame, int32_t count, const std::function<void()>& pass) {
    // So many passes run without a look at what they changed: no usual number of passes pays for the mark.
    constexpr int32_t kFirstMark = 8;
    if (frame.Count() == 0) return;
    std::vector<uint16_t> mark;
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
        pass();
    }
}

}  // namespace vastrelline
