// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/DetailLoops.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <vector>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

#include "pixels/PixelLanesAvx2.inl"
#include "stages/adaptive_unsharp/DetailLoopsVector.inl"

}  // namespace

const DetailLoops kDetailLoopsAvx2 = {BlendByEdges,  ScaleDetail,   AddShaped,  AddFinest,
                                      TakeMagnitude, ClampToLevels, AddWeighted};

}  // namespace vastrelline

#endif
