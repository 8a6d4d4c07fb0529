// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/SobelMagnitude.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

constexpr SobelRowVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, SobelRowScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, SobelRowBaseline},
    {"avx2", InstructionSet::Avx2, SobelRowAvx2},
    {"avx512", InstructionSet::Avx512, SobelRowAvx512},
#endif
};

}  // namespace

std::span<const SobelRowVariant> SobelRowVariants() { return AllowedVariants(kVariants); }

void SobelMagnitudeWith(const SobelRowVariant& variant, uint16_t* pixels, int32_t width, int32_t height) {
    constexpr int32_t kNarrowest = 3;
    const FrameView<uint16_t> frame(pixels, width, height);
    if (width < kNarrowest || height < kNarrowest) {
        std::fill(frame.begin(), frame.end(), uint16_t{0});
        return;
    }
    // The rows that the magnitudes have replaced by the time they are read.
    std::vector<uint16_t> above(frame.Row(0), frame.Row(1));
    std::vector<uint16_t> centre(above.size());
    std::fill_n(frame.Row(0), width, uint16_t{0});
    for (int32_t y = 1; y < height - 1; ++y) {
        uint16_t* row = frame.Row(y);
        std::copy_n(row, width, centre.begin());
        variant.run({above.data(), centre.data(), frame.Row(y + 1), width - 2, row + 1});
        row[0] = 0;
        row[width - 1] = 0;
        above.swap(centre);
    }
    std::fill_n(frame.Row(height - 1), width, uint16_t{0});
}

void SobelMagnitudeInPlace(uint16_t* pixels, int32_t width, int32_t height) {
    SobelMagnitudeWith(FastestOf(SobelRowVariants()), pixels, width, height);
}

}  // namespace vastrelline
