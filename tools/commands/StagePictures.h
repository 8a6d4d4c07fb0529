// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frames/GreyWindow.h"
#include "runs/CurveFile.h"
#include "runs/StageBands.h"
#include "runs/StagePoints.h"

namespace vastrelline {

// A point of a run with what else its stage left, and what is made of it.
struct ShownPoint {
    StagePoint point;
    std::vector<CurvePoint> curve;  // laid over the frame before; empty: none
    std::vector<StageBand> bands;   // of the pyramid
};

// A file of a folder.
struct FolderFile {
    std::string leaf;
    std::string bytes;
};

struct BandFiles {
    std::string before;
    std::string after;
    std::string curve;  // empty: the band was left alone
    int32_t reach = 0;  // the level that is shown white, and as a negative one black
};

// What shows one point.
struct PointFiles {
    std::string picture;  // "03_clahe.png"; empty: the stage shows no frame
    GreyWindow window;    // of the picture
    std::string curve;    // "02_gamma_curve.svg"; empty: none
    std::vector<BandFiles> bands;
};

struct StagePictures {
    std::vector<PointFiles> points;  // as the points
    std::string contactSheet;
    std::vector<FolderFile> files;
};

// Draws everything: pictures of 8 bits, curves over histograms, and all pictures on one sheet.
//
// title      of the sheet
// window     of the frames; none: 0 to topLevel, or to the end of the bits of a frame with brighter levels
// topLevel   of the result
StagePictures DrawStagePictures(const std::string& title, const std::vector<ShownPoint>& points,
                                const std::optional<GreyWindow>& window, int32_t topLevel);

// "03_clahe": the number in the order of the run, and the title in letters that every file system takes.
std::string NumberedLeaf(size_t number, const std::string& title);

// "12.3 %", "under 0.1 %" of what is not nothing.
std::string DescribeShare(double share);

}  // namespace vastrelline
