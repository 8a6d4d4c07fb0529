// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "sensor/CornerMask.h"
#include "sensor/ExposureCurve.h"
#include "sensor/MaskedPixels.h"
#include "sensor/RoundCornerMask.h"
#include "sensor/RowMask.h"
#include "support/Frames.h"

// Masks as whole frames, as tests write them out, in the place of those that hold a few rows.
namespace vastrelline {

inline RowMask MaskOfFrame(const uint16_t* marks, int32_t width, int32_t height) {
    RowMask mask(width, height);
    for (int32_t y = 0; y < height; ++y) {
        const uint16_t* const row = marks + static_cast<size_t>(y) * static_cast<size_t>(width);
        if (std::any_of(row, row + width, [](uint16_t mark) { return mark != 0; }))
            std::copy_n(row, width, mask.Mark(y));
    }
    return mask;
}

// Writes the marked rows of a mask and no other.
inline void CopyMarkedRows(const RowMask& mask, uint16_t* marks) {
    for (const int32_t y : mask.MarkedRows())
        std::copy_n(mask.Row(y), mask.Width(),
                    marks + static_cast<size_t>(y) * static_cast<size_t>(mask.Width()));
}

inline Frame FrameOfMask(const RowMask& mask) {
    Frame frame(mask.Width(), mask.Height());
    CopyMarkedRows(mask, frame.Data());
    return frame;
}

inline void MarkRoundCorners(uint16_t* marks, int32_t width, int32_t height, const CornerOutline& outline,
                             int32_t orientation, int32_t cutLeft, int32_t cutTop) {
    RowMask mask(width, height);
    MarkRoundCorners(mask, outline, orientation, cutLeft, cutTop);
    CopyMarkedRows(mask, marks);
}

inline int32_t MarkCornerTriangles(const uint16_t* frame, uint16_t* marks, int32_t width, int32_t height) {
    RowMask mask(width, height);
    const int32_t result = MarkCornerTriangles(frame, mask);
    CopyMarkedRows(mask, marks);
    return result;
}

inline void DetectCornerMask(const uint16_t* frame, int32_t width, int32_t height, uint16_t* marks,
                             int32_t cutOff, int32_t cutOffRight) {
    RowMask mask(width, height);
    DetectCornerMask(frame, mask, cutOff, cutOffRight);
    CopyMarkedRows(mask, marks);
}

inline int32_t BuildMaskFromGeometry(const uint16_t* frame, uint16_t* marks, int32_t width, int32_t height,
                                     const SensorGeometry& geometry) {
    RowMask mask(width, height);
    const int32_t result = BuildMaskFromGeometry(frame, mask, geometry);
    CopyMarkedRows(mask, marks);
    return result;
}

inline int32_t BuildMaskFromProfile(const uint16_t* frame, uint16_t* marks, int32_t width, int32_t height,
                                    const std::wstring& iniPath) {
    RowMask mask(width, height);
    const int32_t result = BuildMaskFromProfile(frame, mask, iniPath);
    CopyMarkedRows(mask, marks);
    return result;
}

inline void RestoreMaskedPixels(uint16_t* frame, const uint16_t* marks, int32_t width, int32_t height,
                                int32_t flag) {
    RestoreMaskedPixels(frame, MaskOfFrame(marks, width, height), flag);
}

}  // namespace vastrelline
