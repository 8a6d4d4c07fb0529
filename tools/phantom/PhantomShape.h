// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

struct PointMm {
    double x = 0.0;
    double y = 0.0;
};

// A closed smooth curve through the points, as a fine polygon.
std::vector<PointMm> SmoothOutline(const std::vector<PointMm>& points);

// How deep a point lies inside of a closed outline, in mm; negative outside. Kept on a grid around the
// outline and interpolated between its nodes.
class DepthMap {
public:
    // Depths are kept down to -kReachMm; farther out they are all -kReachMm.
    static constexpr double kReachMm = 1.2;

    // outline   a polygon of 3 or more points that does not cross itself
    explicit DepthMap(const std::vector<PointMm>& outline);

    double At(double x, double y) const;

private:
    double left_ = 0.0;
    double top_ = 0.0;
    int32_t columns_ = 0;
    int32_t rows_ = 0;
    std::vector<double> depths_;
};

// The length of a ray through a rounded body: 0 at its outline, rising like an ellipse, and `thickness` from
// `roundingMm` inwards.
double RayThroughBody(double depth, double roundingMm, double thickness);

}  // namespace vastrelline
