#include "stages/stretch/StretchStage.h"

#include <string>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "pixels/FrameView.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"
#include "report/StageReport.h"
#include "stages/stretch/PlannedCurves.h"
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

void SaveCurve(const std::wstring& writePath, const std::vector<int32_t>& table) {
    WriteCurveFile(writePath + kCurveFileName, 0, static_cast<int32_t>(table.size()) - 1,
                   [&](int32_t level) { return table[static_cast<size_t>(level)]; });
}

StretchSegment StretchBySegments(PlannedCurves& frame, int32_t maxValue, const StretchParams& params) {
    const SegmentCurve curve = BuildSegmentCurve(frame, maxValue, params);
    AddStretchCurve(frame, curve.table);
    const ConfiguredState& state = SharedConfiguredState();
    if (state.SaveImage != 0) SaveCurve(state.WritePath, curve.table);
    return curve.segment;
}

StretchSegment StretchBySegmentsFixed(PlannedCurves& frame, uint16_t* tailMask, int32_t maxValue,
                                      const StretchParams& params, int32_t dumpCounter) {
    const SegmentCurve curve = BuildFixedSegmentCurve(frame, maxValue, params);
    const FrameView<uint16_t>& view = frame.Frame();
    MarkDarkTail(view.begin(), tailMask, view.Width(), view.Height(), curve.segment.left);
    FixedStageReport::DumpBeside(L"%02d_UnsharpMasking.raw", tailMask, view.Width(), view.Height(),
                                 dumpCounter);
    AddStretchCurve(frame, curve.table);
    const FixedState& state = SharedFixedState();
    if (state.SaveImage != 0) SaveCurve(state.WritePath, curve.table);
    return curve.segment;
}

std::wstring SeparateModeLine(const StretchParams& params) {
    return FormatText(L"\t\t\t SeparateMode   : %d\r\n", {params.STRETCH_SEPARATION_CNT});
}

std::wstring SegmentLine(const StretchSegment& segment) {
    return FormatText(L"\t\t\t Segment        : %d,  %d\r\n", {segment.left, segment.right});
}

std::wstring LimitRangeLine(const StretchParams& params) {
    return FormatText(L"\t\t\t Limit Range    : %d,  %d\r\n",
                      {params.LEFT_LEN_LIMIT, params.RIGHT_LEN_LIMIT});
}

}  // namespace

void RunStretchStage(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/,
                     int32_t maxValue, LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const StretchParams params = ReadStretchParams(state.IniPath, state.SectionName, position);

    const ConfiguredStageReport report;
    PlannedCurves frame({pixels, width, height});
    // Only a dump needs the pixels between the two steps.
    const auto dump = [&](const wchar_t* name) {
        if (state.SaveImage != 0) frame.Apply();
        ConfiguredStageReport::Dump(name, pixels, width, height);
    };
    StretchSegment segment;
    if (IsSegmentMode(params)) {
        segment = StretchBySegments(frame, maxValue, params);
        dump(kStretchedDump);
    } else if (IsPercentMode(params)) {
        AddStretchCurve(frame, BuildPercentCurve(frame, maxValue, params));
    }
    if (AddRestretch(frame, maxValue, params.RESTRETCH_OPTION)) dump(kRestretchedDump);
    frame.Apply();
    report.Log(log, L"#### %02d:%02d:%02d \t: StretchCurve ( %.03lf sec )\r\n",
               {SeparateModeLine(params), SegmentLine(segment), LimitRangeLine(params)});
}

void RunFixedStretch(uint16_t* pixels, uint16_t* tailMask, int32_t width, int32_t height,
                     int32_t /*pixelCount*/, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                     const FixedSettings& settings) {
    const FixedStageReport report;
    const StretchParams params = StretchParamsOf(settings);
    PlannedCurves frame({pixels, width, height});
    const auto dump = [&](const wchar_t* name) {
        if (SharedFixedState().SaveImage != 0) frame.Apply();
        FixedStageReport::Dump(name, pixels, width, height, dumpCounter);
    };
    StretchSegment segment;
    if (IsSegmentMode(params)) {
        segment = StretchBySegmentsFixed(frame, tailMask, maxValue, params, dumpCounter);
        dump(kStretchedDump);
    }
    if (AddRestretch(frame, maxValue, params.RESTRETCH_OPTION)) dump(kRestretchedDump);
    frame.Apply();
    report.Log(log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: StretchCurve ( %d ms )\r\n",
               {SeparateModeLine(params), SegmentLine(segment), LimitRangeLine(params)});
}

}  // namespace vastrelline
