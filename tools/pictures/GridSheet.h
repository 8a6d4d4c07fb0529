// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "pictures/Canvas.h"
#include "pictures/Caption.h"

namespace vastrelline {

// What stands above the columns and beside the rows.
struct GridLabels {
    std::vector<std::string> across;  // at least one
    std::vector<std::string> down;    // at least one
};

// One picture of a table of pictures: below a title the columns' labels, beside each row its label, each
// picture with its words under it. Pictures become smaller, the more so the more columns there are, never
// larger.
//
// pictures   row by row: as many as there are columns times rows
Canvas DrawGridSheet(const std::string& title, const GridLabels& labels,
                     const std::vector<CaptionedPicture>& pictures);

}  // namespace vastrelline
