#include "prepare/InversionStage.h"

#include "config/ConfiguredState.h"
#include "diagnostics/StageReport.h"
#include "image/FrameView.h"
#include "image/Truncate.h"
#include "prepare/LogCurve.h"
#include "tone/GammaCurve.h"

namespace vastrelline {

void InvertPixels(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue) {
    for (uint16_t& pixel : FrameView(pixels, width, height)) pixel = LowBits16(maxValue - pixel);
}

void RunInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/, int32_t maxValue,
                  LogFile& /*log*/, const CommonSettings& settings) {
    constexpr int32_t kOn = 1;
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
    ConfiguredStageReport::Dump(L"%02d_OriginalImage_Invert.raw", pixels, width, height);
}

}  // namespace vastrelline
