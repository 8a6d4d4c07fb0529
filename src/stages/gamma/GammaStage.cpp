// SPDX-License-Identifier: Apache-2.0
#include "stages/gamma/GammaStage.h"

#include <algorithm>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "operators/curves/GammaCurve.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"
#include "report/StageReport.h"
#include "report/TellIfPossible.h"
#include "stages/gamma/GammaParams.h"

namespace vastrelline {

namespace {

constexpr const wchar_t* kDumpName = L"%02d_Result_Gamma.raw";
constexpr const wchar_t* kGammaLine = L"\t\t\t Gamma : %.2lf\r\n";

}  // namespace

void ApplyGammaCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                     double gamma, int32_t limitBin, int32_t inverse, int32_t saveCurve,
                     const std::wstring& path, int32_t number) {
    TonedFrame frame({pixels, width, height});
    ApplyGammaCurve(frame, maxValue, outputRange, gamma, limitBin, inverse, saveCurve, path, number);
    frame.Change();
}

void ApplyGammaCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double gamma, int32_t limitBin,
                     int32_t inverse, int32_t saveCurve, const std::wstring& path, int32_t number) {
    const GammaShape shape = FindGammaShape(frame, maxValue, outputRange, gamma, limitBin, inverse);
    if (saveCurve != 0) {
        TellIfPossible([&] {
            WriteCurveFile(path + FormatText(L"%02d_GammaCurve.txt", {number}), shape.Low(), shape.High(),
                           MakeGammaTable(shape, maxValue).table);
        });
    }
    frame.MapBy([&](int32_t level) { return shape.EntryAt(std::min(level, maxValue)); });
}

void RunGammaStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                   int32_t position) {
    TonedFrame frame({pixels, width, height});
    RunGammaStage(frame, maxValue, log, position);
    frame.Change();
}

void RunGammaStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const GammaParams params = ReadGammaParams(state.IniPath, state.SectionName, position);
    const CommonSettings settings = ReadStageSettings(state.IniPath, state.SectionName);

    const StageReport report = StageReport::BeginConfigured(log);
    const double gamma = ChooseGamma(frame, settings.OUTPUTRANGE, params.POST_GAMMA_RATIO);
    ApplyGammaCurve(frame, maxValue, settings.OUTPUTRANGE, gamma, 0, 0, state.SaveImage, state.WritePath,
                    state.DumpNumber);
    // The curve file and this dump share one number.
    report.Dump(kDumpName, frame);
    report.Log(L"#### %02d:%02d:%02d \t: Gamma Curve ( %.03lf sec )\r\n", {LogLine(kGammaLine, {gamma})});
}

void RunFixedGamma(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                   LogFile& log, const FixedSettings& settings) {
    TonedFrame frame({pixels, width, height});
    RunFixedGamma(frame, maxValue, dumpCounter, log, settings);
    frame.Change();
}

void RunFixedGamma(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                   const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    const double gamma = ChooseGamma(frame, settings.OUTPUTRANGE, settings.POST_GAMMA_RATIO);
    ApplyGammaCurve(frame, maxValue, settings.OUTPUTRANGE, gamma, 0, 0, 0, L"", 0);
    report.Dump(kDumpName, frame);
    report.Log(L"#### %02d:%02d:%02d \t: Gamma Curve ( %d ms )\r\n", {LogLine(kGammaLine, {gamma})});
}

}  // namespace vastrelline
