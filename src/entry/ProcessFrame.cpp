#include "entry/ProcessFrame.h"

#include <vector>

#include "diagnostics/Bitmap.h"
#include "entry/ConfiguredChain.h"
#include "entry/OutputMapping.h"
#include "image/AllocZeroed.h"
#include "prepare/ExposureCurve.h"

namespace vastrelline {

namespace {

// Clips the highlights of the caller's frame and lifts very dark frames, with the product's fixed knees.
void CorrectExposure(const ProcessCall& call) {
    constexpr int32_t kLowKnee = 250;
    constexpr int32_t kHighKnee = 3800;
    constexpr double kLiftExponent = 0.45;
    constexpr double kReserved = 0.6;
    if (call.input == nullptr || call.width <= 0 || call.height <= 0) return;
    CountPixels(call.width, call.height);
    ApplyExposureCurve(call.input, call.width, call.height, kLowKnee, kHighKnee, kLiftExponent, kReserved,
                       call.iniPath, call.geometry);
}

}  // namespace

ReturnCode ProcessFrame(const ProcessCall& call, uint16_t* output) {
    CorrectExposure(call);
    const ReturnCode code = RunConfiguredChain(call.input, output, call.width, call.height, call.iniPath,
                                               call.sectionName, call.geometry);
    // The mapping runs on any code of the driver, as long as there is a frame.
    const bool hasFrames = call.input != nullptr && output != nullptr && call.width > 0 && call.height > 0;
    if (call.isMappingOn && hasFrames) ApplyOutputMapping(output, call.width, call.height);
    return code;
}

ReturnCode ProcessFrameToBitmap(const ProcessCall& call, const std::wstring& bitmapPath) {
    const bool hasPixels = call.width > 0 && call.height > 0;
    if (hasPixels) CountPixels(call.width, call.height);
    std::vector<uint16_t> scratch =
        AllocZeroed<uint16_t>(hasPixels ? call.width : 1, hasPixels ? call.height : 1);
    const ReturnCode code = ProcessFrame(call, scratch.data());
    if (code != kSuccess || !hasPixels || bitmapPath.empty()) return code;
    const int32_t isSaved = SaveFrameBitmap(scratch.data(), call.width, call.height, bitmapPath);
    return isSaved != 0 ? kSuccess : kNoBitmap;
}

}  // namespace vastrelline
