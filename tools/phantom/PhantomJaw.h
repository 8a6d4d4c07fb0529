// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "phantom/PhantomTeeth.h"

namespace vastrelline {

// What a ray meets beside the teeth, in mm.
struct JawRay {
    double compactBone = 0.0;
    double spongyBone = 0.0;  // as bone of mean density: the texture is in it
    double softTissue = 0.0;
};

// The lower jaw around the teeth: compact plates, spongy bone with its struts, the thin dense wall of each
// socket with the dark gap towards the root, the nerve's canal, gum and cheek.
//
// tooth   the teeth at the same point: a root takes the place of bone
// x, y    of the scene, in mm from its upper left corner
JawRay JawRayAt(uint64_t seed, const ToothRay& tooth, double x, double y);

}  // namespace vastrelline
