// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

struct ModulationPoint {
    double frequency = 0.0;  // cycles per pixel
    double modulation = 0.0;
};

// The mean level at a distance from the edge.
struct EdgePoint {
    double distance = 0.0;  // in pixels; below 0: on the dark side
    double level = 0.0;
};

struct EdgeMeasure {
    bool isLying = false;       // nearer to a row than to a column; angles are then from the row
    double angleDegrees = 0.0;  // from the column; above 0: to the right on its way down
    double darkLevel = 0.0;
    double brightLevel = 0.0;
    double noise = 0.0;            // standard deviation beside the edge, in levels
    double contrastToNoise = 0.0;  // 0 without noise
    double risePixels = 0.0;       // from a tenth to nine tenths of the step
    double overshoot = 0.0;  // how far the response leaves the step, by the step's height; 0 if it does not
    std::vector<EdgePoint> profile;    // across the edge, four points a pixel
    std::vector<ModulationPoint> mtf;  // from 0 to 1 cycle per pixel
    std::optional<double> mtf50;       // cycles per pixel; none if more than half is left everywhere
    double clippedShare = 0.0;         // of the pixels; cut levels make the edge look sharper
};

// The response to a slanted edge, after ISO 12233:2017, annex D (S. E. Reichenbach, S. K. Park, R.
// Narayanswamy: Characterizing digital image acquisition devices. Optical Engineering 30, 1991): a line is
// fitted to the edge's place in each row; all pixels are sorted by their distance from it into bins of a
// quarter of a pixel; the differences of neighbouring bins, under a Hamming window, are the line spread, and
// its spectrum the modulation. What the bins and the differences themselves take from it is put back, sin(x)
// / x each.
//
// Errors   CannotMeasure: too small an area, no edge, an edge that is not straight or lies along the pixels
EdgeMeasure MeasureEdge(const Frame& frame);

}  // namespace vastrelline
