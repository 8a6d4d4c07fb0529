// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"
#include "stages/adaptive_unsharp/WeightTable.h"

namespace vastrelline {

// The scale on which ShapeDetail counts detail: no detail lies in the middle.
inline constexpr int32_t kZeroDetail = 32767;
inline constexpr int32_t kTopDetail = 65533;

// One blend by the strength of edges: base + (original - base) * gains[strength].
struct EdgeBlendCall {
    uint16_t* pixels;          // count strengths of edges, each below gains.size(); replaced by the result
    const uint16_t* original;  // count
    const uint16_t* base;      // count
    size_t count;
    int32_t maxValue;
    std::span<const double> gains;
};

// One addition of shaped detail: smooth + enhanced[detail], or with a mask, whose weight is a 255th and at
// most 1, pixel * weight + (smooth + enhanced[detail]) * (1 - weight).
struct ShapedDetailCall {
    uint16_t* pixels;        // count; replaced by the result
    const uint16_t* smooth;  // count
    const uint16_t* detail;  // count, each below enhanced.size()
    const uint16_t* mask;    // count, or null for none
    size_t count;
    int32_t maxValue;
    std::span<const double> enhanced;
};

// One source of detail: what a smooth copy takes from the frame, times a gain.
struct DetailTerm {
    const uint16_t* smooth;  // count pixels, or null for no detail
    double gain;
};

// One addition of weighted detail. The weight is that of the first term's smooth pixel times that of the
// activity, and where it is not above 0 nothing is added. Each term is (pixel - smooth) * weight * gain,
// truncated toward zero; the sum keeps its low 16 bits.
struct WeightedDetailCall {
    uint16_t* pixels;          // count; replaced by the result
    const uint16_t* activity;  // count
    size_t count;
    int32_t maxValue;
    DetailTerm first;  // has its pixels
    DetailTerm second;
    const WeightTable& brightnessTable;  // covers the first term's smooth pixels
    const WeightTable& activityTable;    // covers the activity
};

// The loops of sharpening over all pixels of a frame. What they give is truncated toward zero as
// TruncateToInt32 does, then clamped as ClampToPixel does.
struct DetailLoops {
    void (*blendByEdges)(const EdgeBlendCall& call);

    // A pixel less its smooth copy, in 16 bits with a sign and so maybe wrapped, on the scale of detail.
    void (*scaleDetail)(const uint16_t* pixels, const uint16_t* smooth, size_t count, uint16_t* detail);
    void (*addShaped)(const ShapedDetailCall& call);
    // image = shaped + (image - base), clamped
    void (*addFinest)(uint16_t* image, const uint16_t* base, const uint16_t* shaped, size_t count,
                      int32_t maxValue);

    // band = |band - wide|
    void (*takeMagnitude)(uint16_t* band, const uint16_t* wide, size_t count);
    // Clamps to low..high, of which `low` is not above `high`.
    void (*clampToLevels)(uint16_t* pixels, size_t count, uint16_t low, uint16_t high);
    void (*addWeighted)(const WeightedDetailCall& call);
};

// A form of the loops.
using DetailVariant = Variant<const DetailLoops*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const DetailVariant> DetailVariants();

// The definition.
extern const DetailLoops kDetailLoopsScalar;

#if VASTRELLINE_VECTOR_FORMS
extern const DetailLoops kDetailLoopsBaseline;
extern const DetailLoops kDetailLoopsAvx2;
extern const DetailLoops kDetailLoopsAvx512;
#endif

}  // namespace vastrelline
