// SPDX-License-Identifier: Apache-2.0
#include "stages/stretch/StretchStage.h"

#include "config/ConfiguredState.h"
#include "report/CurveFile.h"
#include "report/RunDumps.h"
#include "report/StageReport.h"
#include "report/TellIfPossible.h"
#include "stages/stretch/StretchParams.h"
#include "stages/stretch/StretchSegments.h"

namespace vastrelline {

namespace {

// sic: the name of another curve. It has no number.
constexpr const wchar_t* kCurveFileName = L"AdjustCurve_Sigmoid.txt";

constexpr const wchar_t* kStretchedDump = L"%02d_StretchImage0.raw";
constexpr const wchar_t* kRestretchedDump = L"%02d_StretchImage2.raw";

bool IsSegmentMode(const StretchParams& params) {
    return params.STRETCH_SEPARATION_CNT >= static_cast<int32_t>(StretchMode::WholeRange) &&
           params.STRETCH_SEPARATION_CNT <= static_cast<int32_t>(StretchMode::BothValleys);
}

bool IsPercentMode(const StretchParams& params) {
    return params.STRETCH_SEPARATION_CNT >= static_cast<int32_t>(StretchMode::BothPercent) &&
           params.STRETCH_SEPARATION_CNT <= static_cast<int32_t>(StretchMode::RightPercent);
}

void SaveCurve(const StretchFunction& curve, int32_t maxValue, const RunDumps& dumps) {
    if (!dumps.AreOn()) return;
    TellIfPossible([&] { WriteCurveFile(dumps.WritePath() + kCurveFileName, 0, maxValue, curve); });
}

StretchSegment StretchBySegments(TonedFrame& frame, int32_t maxValue, const StretchParams& params,
                                 const RunDumps& dumps) {
    const SegmentCurve stretch = BuildSegmentCurve(frame, maxValue, params);
    AddStretchCurve(frame, maxValue, stretch.curve);
    SaveCurve(stretch.curve, maxValue, dumps);
    return stretch.segment;
}

StretchSegment StretchBySegmentsFixed(TonedFrame& frame, uint16_t* tailMask, int32_t maxValue,
                                      const StretchParams& params, const RunDumps& dumps) {
    const SegmentCurve stretch = BuildFixedSegmentCurve(frame, maxValue, params);
    MarkDarkTail(frame.Read().begin(), tailMask, frame.Width(), frame.Height(), stretch.segment.left);
    dumps.DumpBeside(L"%02d_UnsharpMasking.raw", tailMask, frame.Width(), frame.Height());
    AddStretchCurve(frame, maxValue, stretch.curve);
    SaveCurve(stretch.curve, maxValue, dumps);
    return stretch.segment;
}

void FinishStretch(TonedFrame& frame, int32_t maxValue, const StretchParams& params, const RunDumps& dumps) {
    if (AddRestretch(frame, maxValue, params.RESTRETCH_OPTION)) dumps.Dump(kRestretchedDump, frame);
}

void LogStretch(const StageReport& report, const wchar_t* stageLine, const StretchParams& params,
                const StretchSegment& segment) {
    report.Log(stageLine, {LogLine(L"\t\t\t SeparateMode   : %d\r\n", {params.STRETCH_SEPARATION_CNT}),
                           LogLine(L"\t\t\t Segment        : %d,  %d\r\n", {segment.left, segment.right}),
                           LogLine(L"\t\t\t Limit Range    : %d,  %d\r\n",
                                   {params.LEFT_LEN_LIMIT, params.RIGHT_LEN_LIMIT})});
}

}  // namespace

void RunStretchStage(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/,
                     int32_t maxValue, LogFile& log, int32_t position) {
    TonedFrame frame({pixels, width, height});
    RunStretchStage(frame, maxValue, log, position);
    frame.Change();
}

void RunStretchStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const StretchParams params = ReadStretchParams(state.IniPath, state.SectionName, position);

    const StageReport report = StageReport::BeginConfigured(log);
    StretchSegment segment;
    if (IsSegmentMode(params)) {
        segment = StretchBySegments(frame, maxValue, params, report);
        report.Dump(kStretchedDump, frame);
    } else if (IsPercentMode(params)) {
        AddStretchCurve(frame, maxValue, BuildPercentCurve(frame, maxValue, params));
    }
    FinishStretch(frame, maxValue, params, report);
    LogStretch(report, L"#### %02d:%02d:%02d \t: StretchCurve ( %.03lf sec )\r\n", params, segment);
}

void RunFixedStretch(uint16_t* pixels, uint16_t* tailMask, int32_t width, int32_t height,
                     int32_t /*pixelCount*/, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                     const FixedSettings& settings) {
    TonedFrame frame({pixels, width, height});
    RunFixedStretch(frame, tailMask, maxValue, dumpCounter, log, settings);
    frame.Change();
}

void RunFixedStretch(TonedFrame& frame, uint16_t* tailMask, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    const StretchParams params = StretchParamsOf(settings);
    StretchSegment segment;
    if (IsSegmentMode(params)) {
        segment = StretchBySegmentsFixed(frame, tailMask, maxValue, params, report);
        report.Dump(kStretchedDump, frame);
    }
    FinishStretch(frame, maxValue, params, report);
    LogStretch(report, L"#### %02d:%02d:%02d \t: StretchCurve ( %d ms )\r\n", params, segment);
}

}  // namespace vastrelline
