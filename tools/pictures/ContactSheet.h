// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "pictures/Canvas.h"
#include "pictures/Caption.h"

namespace vastrelline {

// A picture as small as a sheet shows it, for whoever has many pictures and not room for all of them.
Canvas ShrinkForSheet(const Canvas& picture);

// One picture of many: below a title all of them small, in rows, each with its words under it, which have as
// many lines as they need. Pictures may differ in size; they become smaller, never larger.
//
// pictures   at least one
// inRow      pictures in a row; 0: as many as make rows of one length, at most six
Canvas DrawContactSheet(const std::string& title, const std::vector<CaptionedPicture>& pictures,
                        size_t inRow);

}  // namespace vastrelline
