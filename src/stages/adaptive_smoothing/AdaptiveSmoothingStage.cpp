// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/AdaptiveSmoothingStage.h"

#include "config/ConfiguredState.h"
#include "report/StageReport.h"
#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"
#include "stages/adaptive_smoothing/SmoothingModes.h"

namespace vastrelline {

void RunAdaptiveSmoothingStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                               LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const AdaptiveSmoothingParams params =
        ReadAdaptiveSmoothingParams(state.IniPath, state.SectionName, position);
    const auto mode = static_cast<SmoothingMode>(params.ADAPTIVESMOOTHING_Mode);

    const StageReport report = StageReport::BeginConfigured(log);
    SmoothByMode(pixels, width, height, maxValue, params);
    report.Dump(L"%02d_SavgolProc.raw", pixels, width, height);
    report.Log(mode == SmoothingMode::Deviation
                   ? L"#### %02d:%02d:%02d \t: AdapSmooth - SEP ( %.03lf sec )\r\n"
                   : L"#### %02d:%02d:%02d \t: AdapSmooth - Savgol ( %.03lf sec )\r\n",
               {LogLine(L"\t\t\t MaskSize : %.03lf\r\n", {params.ADAPTIVESMOOTHING_MASK}),
                LogLine(L"\t\t\t Order    : %d\r\n", {params.ADAPTIVESMOOTHING_ORDER}),
                LogLine(L"\t\t\t Order    : %d\r\n", {params.ADAPTIVESMOOTHING_Mode})});  // sic
}

void RunAdaptiveSmoothing(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                          int32_t& dumpCounter, LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    const int32_t mask = settings.ADAPTIVESMOOTHING_MASK;
    const int32_t order = settings.ADAPTIVESMOOTHING_ORDER;
    SavgolSmooth(pixels, width, height, maxValue, mask, order);
    report.Dump(L"%02d_AdaptiveSmooting.raw", pixels, width, height);  // sic
    report.Log(L"#### %02d:%02d:%02d \t: AdaptiveSmoothing ( %d ms )\r\n",
               {LogLine(L"\t\t\t MaskSize : %d\r\n", {mask}), LogLine(L"\t\t\t Order    : %d\r\n", {order})});
}

}  // namespace vastrelline
