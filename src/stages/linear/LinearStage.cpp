#include "stages/linear/LinearStage.h"

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "operators/curves/LinearCurve.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/linear/LinearParams.h"

namespace vastrelline {

void RunLinearStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                    int32_t stageNumber) {
    constexpr int32_t kWindowMode = 2;
    const ConfiguredState& state = SharedConfiguredState();
    const LinearParams params = ReadLinearParams(state.IniPath, state.SectionName, stageNumber);
    CommonSettings settings;
    ReadCommonSettings(state.IniPath, state.SectionName, settings);

    const ConfiguredStageReport report;
    if (params.POST_LINEAR_MODE == kWindowMode) {
        const int32_t shift = params.POST_LINEAR_BRIGHTOPT;
        const int32_t centre = TruncateToInt32(maxValue / 2.0 + shift);
        const int32_t magnitude = shift < 0 ? WrappingSubtract(0, shift) : shift;
        ApplyWindowCurve(pixels, width, height, WrappingAdd(magnitude, maxValue), centre,
                         settings.OUTPUTRANGE, state.SaveImage, state.WritePath, state.DumpNumber);
    } else {
        ApplyLinearCurve(pixels, width, height, maxValue, settings.OUTPUTRANGE, params.POST_LINEAR_LIMITBIN,
                         params.POST_LINEAR_MODE, state.SaveImage, state.WritePath, state.DumpNumber);
    }
    report.Log(log, L"#### %02d:%02d:%02d \t: Linear Curve ( %.03lf sec )\r\n",
               {FormatText(L"\t\t\t Mode        : %d\r\n", {params.POST_LINEAR_MODE}),
                FormatText(L"\t\t\t LimitBin    : %d\r\n", {params.POST_LINEAR_LIMITBIN}),
                FormatText(L"\t\t\t BrightOpt   : %d\r\n", {params.POST_LINEAR_BRIGHTOPT})});
}

}  // namespace vastrelline
