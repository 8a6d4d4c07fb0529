// SPDX-License-Identifier: Apache-2.0
#include "sensor/TonedSteps.h"

#include <algorithm>
#include <vector>

#include "config/CommonSettings.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "sensor/CornerMask.h"
#include "sensor/MaskedPixels.h"
#include "sensor/PixelBits.h"
#include "sensor/SaturationCap.h"

namespace vastrelline {

int32_t RescaleTonedBits(TonedFrame& frame, int32_t& bitsStored) {
    if (!ArePixelsRescaled(bitsStored)) return MaxValueOfBits(bitsStored);
    return RescaleToPixelBits(frame.Change().begin(), frame.Width(), frame.Height(), bitsStored);
}

void CapTonedSaturation(TonedFrame& frame, int32_t saturationValue) {
    if (!frame.IsCounted()) {
        CapSaturation(frame.Change().begin(), frame.Width(), frame.Height(), saturationValue);
        return;
    }
    if (frame.MaxLevel() < saturationValue) return;
    std::vector<uint32_t> below = frame.UnclampedHistogram(std::max(saturationValue, 0) - 1);
    while (!below.empty() && below.back() == 0) below.pop_back();
    const int32_t brightest = std::max(static_cast<int32_t>(below.size()) - 1, 0);
    frame.MapBy([=](int32_t level) { return LowBits16(std::min(level, brightest)); });
}

int32_t BuildTonedMask(TonedFrame& frame, RowMask& mask, const SensorGeometry& geometry) {
    const uint16_t* pixels = nullptr;
    switch (SourceOfCorners(frame.Width(), frame.Height(), geometry)) {
        case CornerSource::Geometry:
            break;
        case CornerSource::Frame:
            pixels = frame.Read().begin();
            break;
        case CornerSource::FrameAndMessage:
            // The host may change the frame while the message stands.
            pixels = frame.Change().begin();
            break;
    }
    return BuildMaskFromGeometry(pixels, mask, geometry);
}

int32_t BuildTonedMaskFromProfile(TonedFrame& frame, RowMask& mask, const std::wstring& iniPath) {
    SensorGeometry geometry{};
    ReadSensorGeometry(iniPath, kSensorSection, geometry);
    return BuildTonedMask(frame, mask, geometry);
}

void FillTonedPixels(TonedFrame& frame, const RowMask& mask, int32_t maxValue) {
    frame.Rearrange({mask.MarkedRows().begin(), mask.MarkedRows().end()},
                    [&mask, maxValue](uint16_t* row, int32_t y) {
                        FillMaskedPixels(row, mask.Row(y), mask.Width(), 1, maxValue);
                    });
}

}  // namespace vastrelline
