#include "stages/inversion/InversionStage.h"

#include <cstddef>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "operators/curves/GammaCurve.h"
#include "operators/curves/LookupTable.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"
#include "report/RunDumps.h"
#include "report/TellIfPossible.h"
#include "stages/inversion/InvertPixels.h"
#include "stages/inversion/LogCurve.h"

namespace vastrelline {

namespace {

constexpr int32_t kOn = 1;
constexpr const wchar_t* kDumpName = L"%02d_OriginalImage_Invert.raw";

// The frame inverted through a power curve within its own range.
void ApplyInversePower(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double exponent,
                       const ConfiguredState& state) {
    constexpr int32_t kOwnRange = 0;
    const GammaCurve curve = BuildGammaCurve(pixels, width, height, maxValue, kOwnRange, exponent, 0, kOn);
    if (state.SaveImage != 0) {
        TellIfPossible([&] {
            WriteCurveFile(state.WritePath + FormatText(L"%02d_GammaCurve.txt", {state.DumpNumber}),
                           curve.low, curve.high, curve.table);
        });
    }
    ApplyLookupTable(pixels, width, height, curve.table);
}

void WriteLogCurve(const std::wstring& path, const LogCurve& curve) {
    const int32_t last = curve.minLevel + static_cast<int32_t>(curve.table.size()) - 1;
    WriteCurveFile(path, curve.minLevel, last,
                   [&](int32_t level) { return curve.table[static_cast<size_t>(level - curve.minLevel)]; });
}

}  // namespace

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
            // The ratio is the exponent here.
            ApplyInversePower(pixels, width, height, maxValue, settings.INVERSE_LOGRATIO, state);
            break;
        default:
            break;
    }
    // The curve file and this dump share one number.
    RunDumps::Configured().Dump(kDumpName, pixels, width, height);
}

void RunFixedInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/,
                       int32_t maxValue, int32_t& dumpCounter, LogFile& /*log*/,
                       const FixedSettings& settings) {
    if (settings.INVERSE_INTENSITY == 1) InvertPixels(pixels, width, height, maxValue);
    if (settings.INVERSE_INTENSITY == 2) {
        ApplyFixedLogCurve(pixels, width, height, settings.INVERSE_LOGRATIO, kOn);
    }
    RunDumps::Fixed(dumpCounter).Dump(kDumpName, pixels, width, height);
}

void ApplyLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse,
                   int32_t saveCurve, const std::wstring& path, int32_t number) {
    const LogCurve curve = BuildLogCurve(pixels, width, height, ratio, inverse);
    if (saveCurve != 0) {
        TellIfPossible([&] { WriteLogCurve(path + FormatText(L"%02d_LogCurve.txt", {number}), curve); });
    }
    ApplyLogTable(pixels, width, height, curve);
}

void ApplyFixedLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse) {
    const FixedState& state = SharedFixedState();
    const LogCurve curve = BuildLogCurve(pixels, width, height, ratio, inverse);
    if (state.SaveImage != 0) {
        TellIfPossible([&] { WriteLogCurve(state.WritePath + L"InverseCurve.txt", curve); });
    }
    ApplyLogTable(pixels, width, height, curve);
}

}  // namespace vastrelline
