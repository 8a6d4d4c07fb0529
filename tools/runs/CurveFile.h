// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "frames/CurvePoint.h"

namespace vastrelline {

// The points of a curve file that a run left: "level, tab, value" a line, in its order. Lines of another kind
// are passed over.
//
// Errors   InputError if it cannot be read
std::vector<CurvePoint> ReadCurveFile(const std::string& path);

}  // namespace vastrelline
