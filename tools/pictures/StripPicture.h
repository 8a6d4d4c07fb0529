#pragma once

#include <string>
#include <vector>

#include "pictures/Canvas.h"

namespace vastrelline {

// A picture with words for it.
struct CaptionedPicture {
    std::string title;   // "4 CLAHE"
    std::string detail;  // "2 ms"; may be empty
    Canvas picture;
};

// One picture of several: before and after large, side by side, below them all steps small, in rows of at
// most eight, each with its words under it. All pictures are of one size and become smaller, never larger.
Canvas DrawStrip(const CaptionedPicture& before, const CaptionedPicture& after,
                 const std::vector<CaptionedPicture>& steps);

}  // namespace vastrelline
