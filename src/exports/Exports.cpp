// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <string>

#include "chains/CrChain.h"
#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "config/DoseRecord.h"
#include "exports/CallScope.h"
#include "exports/GuardExport.h"
#include "exports/ProcessFrame.h"
#include "pixels/ScratchArena.h"
#include "platform/Text.h"
#include "sensor/Rotation.h"
#include "vastrelline.h"

using vastrelline::CallScope;
using vastrelline::CountPixels;
using vastrelline::DecidingChain;
using vastrelline::DriverCall;
using vastrelline::GuardExport;
using vastrelline::kInternalFailure;
using vastrelline::ListedChain;
using vastrelline::ProcessCall;
using vastrelline::ProcessFrame;
using vastrelline::ProcessFrameToBitmap;
using vastrelline::RunCrChain;
using vastrelline::ScratchCall;
using vastrelline::WidenThreadText;
using vastrelline::WidenUtf8Text;

namespace {

// What all five processing exports are given. The geometry is the profile's, and the modes select the chains
// that every export has: an export with more to choose from says so afterwards.
//
// widen   turns the caller's texts into wide ones
ProcessCall MakeCall(std::wstring (*widen)(const char* text), uint16_t* input, int32_t width, int32_t height,
                     const char* iniPath, const char* sectionName, uint8_t applyMapping,
                     uint8_t applySpotCorrection) {
    return {.input = input,
            .width = width,
            .height = height,
            .iniPath = widen(iniPath),
            .sectionName = widen(sectionName),
            .isMappingOn = applyMapping != 0,
            .isSpotCorrectionOn = applySpotCorrection != 0};
}

}  // namespace

extern "C" int32_t ImageProcessing(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                   const char* iniPath, const char* sectionName, uint8_t applyMapping,
                                   uint8_t applySpotCorrection) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call = MakeCall(WidenThreadText, input, width, height, iniPath, sectionName,
                                          applyMapping, applySpotCorrection);
        return ProcessFrame(call, output);
    });
}

extern "C" int32_t ImageProcessingS(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                    const char* iniPath, const char* sectionName, uint8_t applyMapping,
                                    uint8_t applySpotCorrection, const SensorGeometry* geometry) {
    return GuardExport(kInternalFailure, [&] {
        ProcessCall call = MakeCall(WidenThreadText, input, width, height, iniPath, sectionName, applyMapping,
                                    applySpotCorrection);
        call.geometry = geometry;
        call.mode3 = DecidingChain::LowExposure;
        return ProcessFrame(call, output);
    });
}

extern "C" int32_t ImageProcessing_N(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                     const char* sectionName, uint8_t applyMapping,
                                     uint8_t applySpotCorrection, const char* bitmapPath) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call = MakeCall(WidenThreadText, input, width, height, iniPath, sectionName,
                                          applyMapping, applySpotCorrection);
        return ProcessFrameToBitmap(call, WidenThreadText(bitmapPath));
    });
}

extern "C" int32_t ImageProcessing_NS(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                      const char* sectionName, uint8_t applyMapping,
                                      uint8_t applySpotCorrection, const char* bitmapPath,
                                      const SensorGeometry* geometry) {
    return GuardExport(kInternalFailure, [&] {
        ProcessCall call = MakeCall(WidenUtf8Text, input, width, height, iniPath, sectionName, applyMapping,
                                    applySpotCorrection);
        call.geometry = geometry;
        call.mode3 = DecidingChain::LowExposure;
        return ProcessFrameToBitmap(call, WidenUtf8Text(bitmapPath));
    });
}

extern "C" int32_t ImageProcessing_NE(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                      const char* sectionName, uint8_t applyMapping,
                                      uint8_t applySpotCorrection, const char* bitmapPath,
                                      const char* sensorFolder, int32_t sensorMode) {
    return GuardExport(kInternalFailure, [&] {
        ProcessCall call = MakeCall(WidenThreadText, input, width, height, iniPath, sectionName, applyMapping,
                                    applySpotCorrection);
        call.mode2 = ListedChain::Extended;
        call.sensorFolder = WidenThreadText(sensorFolder);
        call.sensorMode = sensorMode;
        return ProcessFrameToBitmap(call, WidenThreadText(bitmapPath));
    });
}

extern "C" int32_t ImageProcessingCR(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                     const char* iniPath, const char* sectionName) {
    return GuardExport(kInternalFailure, [&] {
        const DriverCall call{
            input, output, width, height, WidenThreadText(iniPath), WidenThreadText(sectionName)};
        const CallScope scope(call.iniPath);
        const ScratchCall scratch(width, height);
        return RunCrChain(call);
    });
}

extern "C" void Getdose_ImageInfo(int32_t* objectMedian, int32_t* objectTotal, int32_t* lowSignal,
                                  double* lowRatio, int32_t* lowExposure) {
    const vastrelline::DoseRecord record = vastrelline::SharedDoseRecord();
    if (objectMedian != nullptr) *objectMedian = record.ObjectMedian;
    if (objectTotal != nullptr) *objectTotal = record.ObjectTotal;
    if (lowSignal != nullptr) *lowSignal = record.LowSignal;
    if (lowRatio != nullptr) *lowRatio = record.LowRatio;
    if (lowExposure != nullptr) *lowExposure = record.LowExposure;
}

extern "C" int32_t RotateImage(uint16_t* frame, int32_t width, int32_t height, int32_t rotation,
                               int32_t flip) {
    constexpr int32_t kNotRotated = 0;
    return GuardExport(kNotRotated, [&] {
        if (frame != nullptr && width > 0 && height > 0) CountPixels(width, height);
        const ScratchCall scratch(width, height);
        return vastrelline::RotateAndFlip(frame, width, height, rotation, flip);
    });
}
