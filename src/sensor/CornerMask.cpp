// SPDX-License-Identifier: Apache-2.0
#include "sensor/CornerMask.h"

#include <optional>

#include "pixels/Truncate.h"
#include "sensor/CornerOutline.h"
#include "sensor/RoundCornerMask.h"

namespace vastrelline {

namespace {

// What is left of a side after both cuts.
int32_t CutSide(int32_t side, int32_t firstCut, int32_t secondCut) {
    return WrappingSubtract(WrappingSubtract(side, firstCut), secondCut);
}

// Whether the delivered frame has the size that the geometry gives it. The cuts keep their left and top
// meaning in the turned frame.
bool FitsFrame(const SensorGeometry& geometry, int32_t code, int32_t width, int32_t height) {
    const bool isTurned = code == kTurnedClockwise || code == kTurnedCounterclockwise;
    const int32_t fullWidth = isTurned ? geometry.FrameHeight : geometry.FrameWidth;
    const int32_t fullHeight = isTurned ? geometry.FrameWidth : geometry.FrameHeight;
    return width == CutSide(fullWidth, geometry.ImgCutLeft, geometry.ImgCutRight) &&
           height == CutSide(fullHeight, geometry.ImgCutTop, geometry.ImgCutBottom);
}

}  // namespace

int32_t BuildMaskFromGeometry(const uint16_t* frame, RowMask& mask, const SensorGeometry& geometry) {
    const int32_t code = ComputeOrientationCode(geometry.Rotation, geometry.Flip);
    if (code == kOrientationUnknown || !FitsFrame(geometry, code, mask.Width(), mask.Height())) {
        return MarkCornerTriangles(frame, mask);
    }
    const std::optional<CornerOutline> outline =
        MakeCornerOutline(geometry.FrameWidth, geometry.FrameHeight, geometry.RCCutOff, geometry.RCCutOffR);
    if (!outline) return MarkCornerTriangles(frame, mask);
    MarkRoundCorners(mask, *outline, code, geometry.ImgCutLeft, geometry.ImgCutTop);
    return 1;
}

CornerSource SourceOfCorners(int32_t width, int32_t height, const SensorGeometry& geometry) {
    const int32_t code = ComputeOrientationCode(geometry.Rotation, geometry.Flip);
    if (code == kOrientationUnknown || !FitsFrame(geometry, code, width, height)) return CornerSource::Frame;
    return HasCornerOutline(geometry.FrameWidth, geometry.FrameHeight, geometry.RCCutOff, geometry.RCCutOffR)
               ? CornerSource::Geometry
               : CornerSource::FrameAndMessage;
}

int32_t BuildMaskFromProfile(const uint16_t* frame, RowMask& mask, const std::wstring& iniPath) {
    SensorGeometry geometry{};
    ReadSensorGeometry(iniPath, kSensorSection, geometry);
    return BuildMaskFromGeometry(frame, mask, geometry);
}

}  // namespace vastrelline
