#include <cstdint>
#include <string>

#include "chains/CrChain.h"
#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "config/DoseRecord.h"
#include "exports/GuardExport.h"
#include "exports/ProcessFrame.h"
#include "platform/Text.h"
#include "sensor/Rotation.h"
#include "vastrelline.h"

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
using vastrelline::WidenThreadText;
using vastrelline::WidenUtf8Text;

extern "C" int32_t ImageProcessing(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                   const char* iniPath, const char* sectionName, uint8_t applyMapping,
                                   uint8_t applySpotCorrection) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call{.input = input,
                               .width = width,
                               .height = height,
                               .iniPath = WidenThreadText(iniPath),
                               .sectionName = WidenThreadText(sectionName),
                               .isMappingOn = applyMapping != 0,
                               .isSpotCorrectionOn = applySpotCorrection != 0,
                               .geometry = nullptr};
        return ProcessFrame(call, output);
    });
}

extern "C" int32_t ImageProcessingS(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                    const char* iniPath, const char* sectionName, uint8_t applyMapping,
                                    uint8_t applySpotCorrection, const SensorGeometry* geometry) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call{.input = input,
                               .width = width,
                               .height = height,
                               .iniPath = WidenThreadText(iniPath),
                               .sectionName = WidenThreadText(sectionName),
                               .isMappingOn = applyMapping != 0,
                               .isSpotCorrectionOn = applySpotCorrection != 0,
                               .geometry = geometry,
                               .mode3 = DecidingChain::LowExposure};
        return ProcessFrame(call, output);
    });
}

extern "C" int32_t ImageProcessing_N(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                     const char* sectionName, uint8_t applyMapping,
                                     uint8_t applySpotCorrection, const char* bitmapPath) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call{.input = input,
                               .width = width,
                               .height = height,
                               .iniPath = WidenThreadText(iniPath),
                               .sectionName = WidenThreadText(sectionName),
                               .isMappingOn = applyMapping != 0,
                               .isSpotCorrectionOn = applySpotCorrection != 0,
                               .geometry = nullptr};
        return ProcessFrameToBitmap(call, WidenThreadText(bitmapPath));
    });
}

extern "C" int32_t ImageProcessing_NS(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                      const char* sectionName, uint8_t applyMapping,
                                      uint8_t applySpotCorrection, const char* bitmapPath,
                                      const SensorGeometry* geometry) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call{.input = input,
                               .width = width,
                               .height = height,
                               .iniPath = WidenUtf8Text(iniPath),
                               .sectionName = WidenUtf8Text(sectionName),
                               .isMappingOn = applyMapping != 0,
                               .isSpotCorrectionOn = applySpotCorrection != 0,
                               .geometry = geometry,
                               .mode3 = DecidingChain::LowExposure};
        return ProcessFrameToBitmap(call, WidenUtf8Text(bitmapPath));
    });
}

extern "C" int32_t ImageProcessing_NE(uint16_t* input, int32_t width, int32_t height, const char* iniPath,
                                      const char* sectionName, uint8_t applyMapping,
                                      uint8_t applySpotCorrection, const char* bitmapPath,
                                      const char* sensorFolder, int32_t sensorMode) {
    return GuardExport(kInternalFailure, [&] {
        const ProcessCall call{.input = input,
                               .width = width,
                               .height = height,
                               .iniPath = WidenThreadText(iniPath),
                               .sectionName = WidenThreadText(sectionName),
                               .isMappingOn = applyMapping != 0,
                               .isSpotCorrectionOn = applySpotCorrection != 0,
                               .geometry = nullptr,
                               .mode2 = ListedChain::Extended,
                               .sensorFolder = WidenThreadText(sensorFolder),
                               .sensorMode = sensorMode};
        return ProcessFrameToBitmap(call, WidenThreadText(bitmapPath));
    });
}

extern "C" int32_t ImageProcessingCR(uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                                     const char* iniPath, const char* sectionName) {
    return GuardExport(kInternalFailure, [&] {
        const DriverCall call{
            input, output, width, height, WidenThreadText(iniPath), WidenThreadText(sectionName)};
        return RunCrChain(call);
    });
}

extern "C" void Getdose_ImageInfo(int32_t* objectMedian, int32_t* objectTotal, int32_t* lowSignal,
                                  double* lowRatio, int32_t* lowExposure) {
    const vastrelline::DoseRecord& record = vastrelline::SharedDoseRecord();
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
        return vastrelline::RotateAndFlip(frame, width, height, rotation, flip);
    });
}
