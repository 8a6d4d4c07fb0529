// SPDX-License-Identifier: Apache-2.0
#include "stages/inversion/InversionStage.h"

#include <algorithm>
#include <cstddef>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "operators/curves/GammaCurve.h"
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
void ApplyInversePower(TonedFrame& frame, int32_t maxValue, double exponent, const ConfiguredState& state) {
    constexpr int32_t kOwnRange = 0;
    const GammaShape shape = FindGammaShape(frame, maxValue, kOwnRange, exponent, 0, kOn);
    if (state.SaveImage != 0) {
        TellIfPossible([&] {
            WriteCurveFile(state.WritePath + FormatText(L"%02d_GammaCurve.txt", {state.DumpNumber}),
                           shape.Low(), shape.High(), MakeGammaTable(shape, maxValue).table);
        });
    }
    frame.MapBy([&](int32_t level) { return shape.EntryAt(std::min(level, maxValue)); });
}

void WriteLogCurve(const std::wstring& path, const LogCurve& curve) {
    const int32_t last = curve.minLevel + static_cast<int32_t>(curve.table.size()) - 1;
    WriteCurveFile(path, curve.minLevel, last,
                   [&](int32_t level) { return curve.table[static_cast<size_t>(level - curve.minLevel)]; });
}

}  // namespace

void RunInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/, int32_t maxValue,
                  LogFile& /*log*/, const CommonSettings& settings) {
    TonedFrame frame({pixels, width, height});
    RunInversion(frame, maxValue, settings);
    frame.Change();
}

void RunInversion(TonedFrame& frame, int32_t maxValue, const CommonSettings& settings) {
    const ConfiguredState& state = SharedConfiguredState();
    switch (settings.INVERSE_INTENSITY) {
        case 1:
            InvertPixels(frame, maxValue);
            break;
        case 2:
            ApplyLogCurve(frame, settings.INVERSE_LOGRATIO, kOn, state.SaveImage, state.WritePath,
                          state.DumpNumber);
            break;
        case 3:
            // The ratio is the exponent here.
            ApplyInversePower(frame, maxValue, settings.INVERSE_LOGRATIO, state);
            break;
        default:
            break;
    }
    // The curve file and this dump share one number.
    RunDumps::Configured().Dump(kDumpName, frame);
}

void RunFixedInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/,
                       int32_t maxValue, int32_t& dumpCounter, LogFile& /*log*/,
                       const FixedSettings& settings) {
    TonedFrame frame({pixels, width, height});
    RunFixedInversion(frame, maxValue, dumpCounter, settings);
    frame.Change();
}

void RunFixedInversion(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter,
                       const FixedSettings& settings) {
    if (settings.INVERSE_INTENSITY == 1) InvertPixels(frame, maxValue);
    if (settings.INVERSE_INTENSITY == 2) ApplyFixedLogCurve(frame, settings.INVERSE_LOGRATIO, kOn);
    RunDumps::Fixed(dumpCounter).Dump(kDumpName, frame);
}

void ApplyLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse,
                   int32_t saveCurve, const std::wstring& path, int32_t number) {
    TonedFrame frame({pixels, width, height});
    ApplyLogCurve(frame, ratio, inverse, saveCurve, path, number);
    frame.Change();
}

void ApplyLogCurve(TonedFrame& frame, double ratio, int32_t inverse, int32_t saveCurve,
                   const std::wstring& path, int32_t number) {
    const LogShape shape(frame.MinLevel(), frame.MaxLevel(), ratio, inverse);
    if (saveCurve != 0) {
        TellIfPossible(
            [&] { WriteLogCurve(path + FormatText(L"%02d_LogCurve.txt", {number}), shape.Table()); });
    }
    frame.MapBy([&](int32_t level) { return shape.EntryAt(level); });
}

void ApplyFixedLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse) {
    TonedFrame frame({pixels, width, height});
    ApplyFixedLogCurve(frame, ratio, inverse);
    frame.Change();
}

void ApplyFixedLogCurve(TonedFrame& frame, double ratio, int32_t inverse) {
    const FixedState& state = SharedFixedState();
    const LogShape shape(frame.MinLevel(), frame.MaxLevel(), ratio, inverse);
    if (state.SaveImage != 0) {
        TellIfPossible([&] { WriteLogCurve(state.WritePath + L"InverseCurve.txt", shape.Table()); });
    }
    frame.MapBy([&](int32_t level) { return shape.EntryAt(level); });
}

}  // namespace vastrelline
