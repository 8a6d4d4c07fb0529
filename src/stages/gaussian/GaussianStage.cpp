#include "stages/gaussian/GaussianStage.h"

#include "config/ConfiguredState.h"
#include "operators/separable/SeparableFilter.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/gaussian/GaussianParams.h"
#include "stages/gaussian/GaussianPasses.h"

namespace vastrelline {

namespace {

constexpr const wchar_t* kDumpName = L"%02d_PreGaussian.raw";

}  // namespace

void RunGaussianStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                      int32_t position) {
    // Unlike in most stages, the time holds the reading of the keys.
    const ConfiguredStageReport report;
    const ConfiguredState& state = SharedConfiguredState();
    const GaussianParams params = ReadGaussianParams(state.IniPath, state.SectionName, position);
    SmoothGaussian(pixels, width, height, maxValue, params);
    ConfiguredStageReport::Dump(kDumpName, pixels, width, height);
    report.Log(log, L"#### %02d:%02d:%02d \t: Gaussian ( %.03lf sec )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lf\r\n", {params.GAUSSIAN_SIZE}),
                FormatText(L"\t\t\t RepaetCnt  : %d\r\n", {params.GAUSSIAN_REPEAT})});  // sic
}

void RunPreGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                    LogFile& log, const FixedSettings& settings) {
    const FixedStageReport report;
    GaussFilterReplicate(pixels, width, height, maxValue, settings.PRE_GAUSSIAN_SIZE);
    FixedStageReport::Dump(kDumpName, pixels, width, height, dumpCounter);
    report.Log(log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: Pre-Gaussian ( %d ms )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lfd\r\n", {settings.PRE_GAUSSIAN_SIZE})});  // sic
}

void RunPostGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings) {
    const FixedStageReport report;
    GaussFilterReplicate(pixels, width, height, maxValue, settings.POST_GAUSSIAN_SIZE);
    FixedStageReport::Dump(kDumpName, pixels, width, height, dumpCounter);
    report.Log(log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: Post-Gaussian ( %d ms )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lf\r\n", {settings.POST_GAUSSIAN_SIZE})});
}

}  // namespace vastrelline
