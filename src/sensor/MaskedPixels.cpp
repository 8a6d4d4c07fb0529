// SPDX-License-Identifier: Apache-2.0
#include "sensor/MaskedPixels.h"

#include <algorithm>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// One half of a row, walked outward. `direction` is 1 where the inside lies to the right of a masked pixel,
// -1 where it lies to the left.
class MirrorFill {
public:
    MirrorFill(uint16_t* row, const uint16_t* maskRow, int32_t direction)
        : row_(row), maskRow_(maskRow), direction_(direction) {}

    void Visit(int32_t x) {
        if (maskRow_[x] != kMasked) return;
        if (count_ == 1) anchor_ = x;
        // The anchor's mirror partner never leaves the row: the count grows by one per visited column.
        row_[x] = row_[anchor_ + direction_ * count_];
        ++count_;
    }

private:
    uint16_t* row_;
    const uint16_t* maskRow_;
    int32_t direction_;
    int32_t count_ = 1;
    int32_t anchor_ = 0;
};

// Part of its callers: behind a call out of a vector form the compiler would leave the upper halves of vector
// registers in use, and all plain code after it would wait for them.
[[gnu::always_inline]] inline void VisitBothSides(MirrorFill& left, MirrorFill& right, int32_t width,
                                                  int32_t first, int32_t last) {
    const int32_t centre = width / 2;
    for (int32_t i = first; i <= last; ++i) {
        left.Visit(centre - i);
        right.Visit(std::min(centre + i, width - 1));
    }
}

// The definitions.
void FillRowScalar(uint16_t* row, const uint16_t* maskRow, int32_t width) {
    MirrorFill left(row, maskRow, 1);
    MirrorFill right(row, maskRow, -1);
    VisitBothSides(left, right, width, 1, width / 2);
}

[[gnu::always_inline]] inline void PaintOneByOne(uint16_t* pixels, const uint16_t* mask, size_t count,
                                                 uint16_t value) {
    for (size_t i = 0; i < count; ++i) {
        if (mask[i] == kMasked) pixels[i] = value;
    }
}
void PaintScalar(uint16_t* pixels, const uint16_t* mask, size_t count, uint16_t value) {
    PaintOneByOne(pixels, mask, count, value);
}

#if VASTRELLINE_VECTOR_FORMS

// These become part of each function below, so that the compiler makes vectors of that function's width.
// Most of a mask is empty: to see that of a stretch takes a vector or two, and nothing else is done there.

[[gnu::always_inline]] inline bool HasMasked(const uint16_t* mask, size_t count) {
    uint16_t found = 0;
    for (size_t i = 0; i < count; ++i) found |= mask[i] == kMasked ? 1U : 0U;
    return found != 0;
}

// A side may read what the other has filled, so that no side runs ahead; a visit of a pixel that is not
// masked leaves no trace.
[[gnu::always_inline]] inline void FillRowInLanes(uint16_t* row, const uint16_t* maskRow, int32_t width) {
    constexpr int32_t kStep = 32;
    if (!HasMasked(maskRow, static_cast<size_t>(width))) return;
    const int32_t centre = width / 2;
    MirrorFill left(row, maskRow, 1);
    MirrorFill right(row, maskRow, -1);
    int32_t first = 1;
    // The last visit of all is left to the rest: of an even width it is held to the last column.
    for (; first + kStep <= centre; first += kStep) {
        const int32_t last = first + kStep - 1;
        if (HasMasked(maskRow + centre - last, kStep) || HasMasked(maskRow + centre + first, kStep))
            VisitBothSides(left, right, width, first, last);
    }
    VisitBothSides(left, right, width, first, centre);
}

[[gnu::always_inline]] inline void PaintInLanes(uint16_t* pixels, const uint16_t* mask, size_t count,
                                                uint16_t value) {
    constexpr size_t kStep = 64;
    size_t start = 0;
    for (; start + kStep <= count; start += kStep) {
        if (!HasMasked(mask + start, kStep)) continue;
        uint16_t painted[kStep];
        for (size_t i = 0; i < kStep; ++i)
            painted[i] = mask[start + i] == kMasked ? value : pixels[start + i];
        std::copy_n(painted, kStep, pixels + start);
    }
    PaintOneByOne(pixels + start, mask + start, count - start, value);
}

void FillRowBaseline(uint16_t* row, const uint16_t* maskRow, int32_t width) {
    FillRowInLanes(row, maskRow, width);
}
void PaintBaseline(uint16_t* pixels, const uint16_t* mask, size_t count, uint16_t value) {
    PaintInLanes(pixels, mask, count, value);
}
TARGET_AVX2 void FillRowAvx2(uint16_t* row, const uint16_t* maskRow, int32_t width) {
    FillRowInLanes(row, maskRow, width);
}
TARGET_AVX2 void PaintAvx2(uint16_t* pixels, const uint16_t* mask, size_t count, uint16_t value) {
    PaintInLanes(pixels, mask, count, value);
}
TARGET_AVX512 void FillRowAvx512(uint16_t* row, const uint16_t* maskRow, int32_t width) {
    FillRowInLanes(row, maskRow, width);
}
TARGET_AVX512 void PaintAvx512(uint16_t* pixels, const uint16_t* mask, size_t count, uint16_t value) {
    PaintInLanes(pixels, mask, count, value);
}

constexpr MaskedPixelLoops kBaseline = {FillRowBaseline, PaintBaseline};
constexpr MaskedPixelLoops kAvx2 = {FillRowAvx2, PaintAvx2};
constexpr MaskedPixelLoops kAvx512 = {FillRowAvx512, PaintAvx512};

#endif

constexpr MaskedPixelLoops kScalar = {FillRowScalar, PaintScalar};

constexpr MaskedPixelsVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kBaseline},
    {"avx2", InstructionSet::Avx2, &kAvx2},
    {"avx512", InstructionSet::Avx512, &kAvx512},
#endif
};

}  // namespace

std::span<const MaskedPixelsVariant> MaskedPixelsVariants() { return AllowedVariants(kVariants); }

void FillMaskedPixels(uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height,
                      int32_t /*maxValue*/) {
    const FrameView<uint16_t> pixels(frame, width, height);
    const FrameView<const uint16_t> masks(mask, width, height);
    const MaskedPixelLoops& loops = *FastestOf(MaskedPixelsVariants()).run;
    for (int32_t y = 0; y < height; ++y) loops.fillRow(pixels.Row(y), masks.Row(y), width);
}

void RestoreMaskedPixels(uint16_t* frame, const RowMask& mask, int32_t flag) {
    constexpr uint16_t kMarker = 4095;
    constexpr size_t kMarkers = 2;
    const FrameView<uint16_t> pixels(frame, mask.Width(), mask.Height());
    const auto width = static_cast<size_t>(mask.Width());
    const uint16_t background =
        flag != 0 ? uint16_t{0} : static_cast<uint16_t>(MaxPixel(frame, mask.Width(), mask.Height()));
    const MaskedPixelLoops& loops = *FastestOf(MaskedPixelsVariants()).run;
    for (const int32_t y : mask.MarkedRows()) {
        const size_t before = static_cast<size_t>(y) * width;
        const size_t markers = before < kMarkers ? std::min(kMarkers - before, width) : 0;
        loops.paint(pixels.Row(y), mask.Row(y), markers, kMarker);
        loops.paint(pixels.Row(y) + markers, mask.Row(y) + markers, width - markers, background);
    }
}

}  // namespace vastrelline
