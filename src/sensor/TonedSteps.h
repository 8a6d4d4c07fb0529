// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/SensorSettings.h"
#include "operators/curves/TonedFrame.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// First steps of a run on a frame whose curves wait. Each does what its model does to pixels, and leaves the
// pixels alone where levels tell enough.

// As RescaleToPixelBits.
int32_t RescaleTonedBits(TonedFrame& frame, int32_t& bitsStored);

// As CapSaturation.
void CapTonedSaturation(TonedFrame& frame, int32_t saturationValue);

// As BuildMaskFromGeometry and BuildMaskFromProfile.
int32_t BuildTonedMask(TonedFrame& frame, RowMask& mask, const SensorGeometry& geometry);
int32_t BuildTonedMaskFromProfile(TonedFrame& frame, RowMask& mask, const std::wstring& iniPath);

// As FillMaskedPixels.
//
// mask   must stay as it is until the frame is asked for its pixels
void FillTonedPixels(TonedFrame& frame, const RowMask& mask, int32_t maxValue);

}  // namespace vastrelline
