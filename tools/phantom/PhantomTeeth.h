// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "phantom/PhantomShape.h"

namespace vastrelline {

// What a ray meets in the teeth on its way to one point of the sensor, in mm.
struct ToothRay {
    double enamel = 0.0;
    double dentine = 0.0;
    double pulp = 0.0;
    double distanceToRoot = DepthMap::kReachMm;  // from the nearest dentine; 0 or less: inside of it
};

// A row of four lower teeth, two premolars and two molars, the outer ones cut by the edges of a scene of
// 26 mm x 33.36 mm. Their biting edges lie about 4.5 mm from the top, the ends of their roots about 26 mm.
class PhantomTeeth {
public:
    explicit PhantomTeeth(uint64_t seed);  // which moves, turns and scales each tooth a little

    // x, y   of the scene, in mm from its upper left corner
    ToothRay RayAt(double x, double y) const;

private:
    struct Tooth {
        DepthMap crown;    // enamel and what it covers
        DepthMap dentine;  // with the root
        DepthMap pulp;     // chamber and canals
        double crownThickness = 0.0;
        double dentineThickness = 0.0;
        double pulpThickness = 0.0;
    };

    std::vector<Tooth> teeth_;
};

}  // namespace vastrelline
