// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "pictures/Canvas.h"
#include "pictures/Caption.h"

namespace vastrelline {

// One picture of several: before and after large, side by side, below them all steps small, in rows of at
// most eight, each with its words under it. All pictures are of one size and become smaller, never larger.
Canvas DrawStrip(const CaptionedPicture& before, const CaptionedPicture& after,
                 const std::vector<CaptionedPicture>& steps);

}  // namespace vastrelline
