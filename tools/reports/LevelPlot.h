// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "frames/Frame.h"

namespace vastrelline {

// How many pixels of two frames have each level, as an SVG element for a page: A as an area, B as a line over
// it. Heights are square roots, so that rare levels are seen beside frequent ones.
std::string LevelPlotMarkup(const Frame& first, const Frame& second);

}  // namespace vastrelline
