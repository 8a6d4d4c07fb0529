// SPDX-License-Identifier: Apache-2.0
#include "stages/sigmoid/SigmoidStage.h"

#include <algorithm>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "operators/curves/LinearCurve.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"
#include "report/StageReport.h"
#include "report/TellIfPossible.h"
#include "stages/sigmoid/SigmoidCurve.h"
#include "stages/sigmoid/SigmoidParams.h"

namespace vastrelline {

namespace {

constexpr int32_t kLimitBin = 10;
constexpr const wchar_t* kDumpName = L"%02d_ResultSigmoid.raw";
constexpr const wchar_t* kRatioLine = L"\t\t\t CutRatio   : %.2lf\r\n";

}  // namespace

void ApplySigmoidCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                       double ratio, int32_t limitBin, int32_t saveCurve, const std::wstring& path,
                       int32_t number) {
    TonedFrame frame({pixels, width, height});
    ApplySigmoidCurve(frame, maxValue, outputRange, ratio, limitBin, saveCurve, path, number);
    frame.Change();
}

void ApplySigmoidCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double ratio,
                       int32_t limitBin, int32_t saveCurve, const std::wstring& path, int32_t number) {
    const SigmoidShape shape(frame.UnclampedHistogram(maxValue), static_cast<int32_t>(frame.Count()),
                             outputRange, ratio, limitBin);
    if (saveCurve != 0) {
        TellIfPossible([&] {
            WriteCurveFile(path + FormatText(L"%02d_SigmoidCurve.txt", {number}), 0, maxValue,
                           shape.Table(maxValue));
        });
    }
    frame.MapBy([&](int32_t level) { return shape.EntryAt(level); });
}

void RunSigmoidStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                     int32_t position) {
    TonedFrame frame({pixels, width, height});
    RunSigmoidStage(frame, maxValue, log, position);
    frame.Change();
}

void RunSigmoidStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const SigmoidParams params = ReadSigmoidParams(state.IniPath, state.SectionName, position);
    const CommonSettings settings = ReadStageSettings(state.IniPath, state.SectionName);

    const StageReport report = StageReport::BeginConfigured(log);
    maxValue = std::max(maxValue, frame.MaxLevel());
    ApplySigmoidCurve(frame, maxValue, settings.OUTPUTRANGE, params.POST_SIGMOID_RATIO, kLimitBin,
                      state.SaveImage, state.WritePath, state.DumpNumber);
    // The curve file and this dump share one number.
    report.Dump(kDumpName, frame);
    report.Log(L"#### %02d:%02d:%02d \t: Sigmoid Curve ( %.03lf sec )\r\n",
               {LogLine(kRatioLine, {params.POST_SIGMOID_RATIO})});
}

void RunFixedSigmoid(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings) {
    TonedFrame frame({pixels, width, height});
    RunFixedSigmoid(frame, maxValue, dumpCounter, log, settings);
    frame.Change();
}

void RunFixedSigmoid(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                     const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    maxValue = std::max(maxValue, frame.MaxLevel());
    if (settings.POST_SIGMOID_LUT == 0) {
        const LinearRamp ramp = FindLinearRamp(frame, maxValue, settings.OUTPUTRANGE, 0, 0);
        frame.MapBy([&](int32_t level) { return ramp.EntryAt(level); });
        report.Log(L"#### %02d:%02d:%02d \t: Linear Curve ( %d ms )\r\n", {});
        return;
    }
    ApplySigmoidCurve(frame, maxValue, settings.OUTPUTRANGE, settings.POST_SIGMOID_RATIO, kLimitBin, 0, L"",
                      0);
    report.Dump(kDumpName, frame);
    report.Log(L"#### %02d:%02d:%02d \t: Sigmoid Curve ( %d ms )\r\n",
               {LogLine(kRatioLine, {settings.POST_SIGMOID_RATIO})});
}

}  // namespace vastrelline
