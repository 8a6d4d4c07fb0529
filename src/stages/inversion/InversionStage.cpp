#include "stages/inversion/InversionStage.h"

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "operators/curves/GammaCurve.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "report/StageReport.h"
#include "stages/inversion/LogCurve.h"

namespace vastrelline {

namespace {

constexpr int32_t kOn = 1;
constexpr const wchar_t* kDumpName = L"%02d_OriginalImage_Invert.raw";

}  // namespace

void InvertPixels(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue) {
    for (uint16_t& pixel : FrameView(pixels, width, height)) pixel = LowBits16(maxValue - pixel);
}

void RunInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/, int32_t maxValue,
                  LogFile& /*log*/, const CommonSettings& settings) {
    const ConfiguredState& state = SharedConfiguredState();
    switch (settings.INVERSE_INTENSITY) {
        case 1:
            InvertPixels(pixels, width, height, maxValue);
            break;
        case 2:
            ApplyLogCurve(pixels, width, height, settings.INVERSE_LOGRATIO, kOn, state.SaveImage,
                          state.WritePath, state.DumpNumber);
            break;
        case 3:
            // An output range of 0 keeps the frame's own range; the ratio is the exponent here.
            ApplyGammaCurve(pixels, width, height, maxValue, 0, settings.INVERSE_LOGRATIO, 0, kOn,
                            state.SaveImage, state.WritePath, state.DumpNumber);
            break;
        default:
            break;
    }
    // The curve file and this dump share one number.
    ConfiguredStageReport::Dump(kDumpName, pixels, width, height);
}

void RunFixedInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/,
                       int32_t maxValue, int32_t& dumpCounter, LogFile& /*log*/,
                       const FixedSettings& settings) {
    if (settings.INVERSE_INTENSITY == 1) InvertPixels(pixels, width, height, maxValue);
    if (settings.INVERSE_INTENSITY == 2) {
        ApplyFixedLogCurve(pixels, width, height, settings.INVERSE_LOGRATIO, kOn);
    }
    FixedStageReport::Dump(kDumpName, pixels, width, height, dumpCounter);
}

void ApplyFixedLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse) {
    const FixedState& state = SharedFixedState();
    const LogCurve curve = BuildLogCurve(pixels, width, height, ratio, inverse);
    if (state.SaveImage != 0) WriteLogCurve(state.WritePath + L"InverseCurve.txt", curve);
    ApplyLogTable(pixels, width, height, curve);
}

}  // namespace vastrelline
