// SPDX-License-Identifier: Apache-2.0
#include "stages/linear/LinearStage.h"

#include <algorithm>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "operators/curves/LinearCurve.h"
#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"
#include "report/StageReport.h"
#include "report/TellIfPossible.h"
#include "stages/linear/LinearParams.h"
#include "stages/linear/WindowCurve.h"

namespace vastrelline {

void ApplyLinearCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                      int32_t limitBin, int32_t mode, int32_t saveCurve, const std::wstring& path,
                      int32_t number) {
    TonedFrame frame({pixels, width, height});
    ApplyLinearCurve(frame, maxValue, outputRange, limitBin, mode, saveCurve, path, number);
    frame.Change();
}

void ApplyLinearCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, int32_t limitBin,
                      int32_t mode, int32_t saveCurve, const std::wstring& path, int32_t number) {
    const LinearRamp ramp = FindLinearRamp(frame, maxValue, outputRange, limitBin, mode);
    const int32_t last = std::min(maxValue, kTopPixel);
    if (saveCurve != 0) {
        TellIfPossible([&] {
            WriteCurveFile(path + FormatText(L"%02d_LinearCurve.txt", {number}), 0, last,
                           [&](int32_t level) { return ramp.ValueAt(level); });
        });
    }
    frame.MapBy([&](int32_t level) { return ramp.EntryAt(std::min(level, last)); });
}

void ApplyWindowCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth, int32_t centre,
                      int32_t outputRange, int32_t saveCurve, const std::wstring& path, int32_t number) {
    TonedFrame frame({pixels, width, height});
    ApplyWindowCurve(frame, windowWidth, centre, outputRange, saveCurve, path, number);
    frame.Change();
}

void ApplyWindowCurve(TonedFrame& frame, int32_t windowWidth, int32_t centre, int32_t outputRange,
                      int32_t saveCurve, const std::wstring& path, int32_t number) {
    const WindowCurve curve = MakeWindowCurve(windowWidth, centre, outputRange);
    if (saveCurve != 0) {
        TellIfPossible([&] {
            WriteCurveFile(path + FormatText(L"%02d_LinearCurve2.txt", {number}), 0,
                           std::min(curve.highEdge, frame.MaxLevel()),
                           [&](int32_t level) { return curve.ValueAt(level); });
        });
    }
    frame.MapBy([&](int32_t level) { return LowBits16(curve.ValueAt(level)); });
}

void RunLinearStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                    int32_t position) {
    TonedFrame frame({pixels, width, height});
    RunLinearStage(frame, maxValue, log, position);
    frame.Change();
}

void RunLinearStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position) {
    constexpr int32_t kWindowMode = 2;
    const ConfiguredState& state = SharedConfiguredState();
    const LinearParams params = ReadLinearParams(state.IniPath, state.SectionName, position);
    const CommonSettings settings = ReadStageSettings(state.IniPath, state.SectionName);

    const StageReport report = StageReport::BeginConfigured(log);
    if (params.POST_LINEAR_MODE == kWindowMode) {
        const int32_t shift = params.POST_LINEAR_BRIGHTOPT;
        const int32_t centre = TruncateToInt32(maxValue / 2.0 + shift);
        const int32_t magnitude = shift < 0 ? WrappingSubtract(0, shift) : shift;
        ApplyWindowCurve(frame, WrappingAdd(magnitude, maxValue), centre, settings.OUTPUTRANGE,
                         state.SaveImage, state.WritePath, state.DumpNumber);
    } else {
        ApplyLinearCurve(frame, maxValue, settings.OUTPUTRANGE, params.POST_LINEAR_LIMITBIN,
                         params.POST_LINEAR_MODE, state.SaveImage, state.WritePath, state.DumpNumber);
    }
    report.Log(L"#### %02d:%02d:%02d \t: Linear Curve ( %.03lf sec )\r\n",
               {LogLine(L"\t\t\t Mode        : %d\r\n", {params.POST_LINEAR_MODE}),
                LogLine(L"\t\t\t LimitBin    : %d\r\n", {params.POST_LINEAR_LIMITBIN}),
                LogLine(L"\t\t\t BrightOpt   : %d\r\n", {params.POST_LINEAR_BRIGHTOPT})});
}

}  // namespace vastrelline
