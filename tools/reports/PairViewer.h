// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "frames/Frame.h"

namespace vastrelline {

// Two frames to be looked at, each with a name for people.
struct ViewedPair {
    size_t number = 1;  // of the viewer on its page: its id is "viewer-1"
    std::string firstName;
    const Frame* first = nullptr;
    std::string secondName;
    const Frame* second = nullptr;
    int32_t largest = 0;  // difference, of frames of one size
    bool isLive = true;   // with the frames inside, whole; else small still pictures only
};

// The viewer as markup of a page: small still pictures, for paper and for readers without scripts, and, where
// it is live, both frames with all their 16 bits, which the page's script shows by swipe, side by side, in
// turns, or as their difference, through any window (ReportPage::UseViewer). Frames of different sizes are
// shown side by side only.
std::string PairViewerMarkup(const ViewedPair& pair);

}  // namespace vastrelline
