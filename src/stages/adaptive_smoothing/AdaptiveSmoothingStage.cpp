#include "stages/adaptive_smoothing/AdaptiveSmoothingStage.h"

#include "config/ConfiguredState.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"
#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"

namespace vastrelline {

namespace {

constexpr int32_t kSavgolMode = 0;
constexpr int32_t kDeviationMode = 1;

}  // namespace

void RunAdaptiveSmoothingStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                               LogFile& log, int32_t stageNumber) {
    const ConfiguredState& state = SharedConfiguredState();
    const AdaptiveSmoothingParams params =
        ReadAdaptiveSmoothingParams(state.IniPath, state.SectionName, stageNumber);
    const double mask = params.ADAPTIVESMOOTHING_MASK;
    const int32_t order = params.ADAPTIVESMOOTHING_ORDER;
    const int32_t mode = params.ADAPTIVESMOOTHING_Mode;

    const ConfiguredStageReport report;
    if (mode == kSavgolMode) {
        SavgolSmooth(pixels, width, height, maxValue, TruncateToInt32(mask), order);
    } else if (mode == kDeviationMode) {
        DeviationWeightedSmooth(pixels, width, height, maxValue, mask, order);
    }
    ConfiguredStageReport::Dump(L"%02d_SavgolProc.raw", pixels, width, height);
    report.Log(log,
               mode == kDeviationMode ? L"#### %02d:%02d:%02d \t: AdapSmooth - SEP ( %.03lf sec )\r\n"
                                      : L"#### %02d:%02d:%02d \t: AdapSmooth - Savgol ( %.03lf sec )\r\n",
               {FormatText(L"\t\t\t MaskSize : %.03lf\r\n", {mask}),
                FormatText(L"\t\t\t Order    : %d\r\n", {order}),
                FormatText(L"\t\t\t Order    : %d\r\n", {mode})});  // sic
}

void RunAdaptiveSmoothing(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                          int32_t& dumpCounter, LogFile& log, const FixedSettings& settings) {
    const FixedStageReport report;
    const int32_t mask = settings.ADAPTIVESMOOTHING_MASK;
    const int32_t order = settings.ADAPTIVESMOOTHING_ORDER;
    SavgolSmooth(pixels, width, height, maxValue, mask, order);
    FixedStageReport::Dump(L"%02d_AdaptiveSmooting.raw", pixels, width, height, dumpCounter);  // sic
    report.Log(
        log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: AdaptiveSmoothing ( %d ms )\r\n",
        {FormatText(L"\t\t\t MaskSize : %d\r\n", {mask}), FormatText(L"\t\t\t Order    : %d\r\n", {order})});
}

}  // namespace vastrelline
