// SPDX-License-Identifier: Apache-2.0
#include "stages/gaussian/GaussianStage.h"

#include "config/ConfiguredState.h"
#include "operators/separable/SeparableFilter.h"
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
    const StageReport report = StageReport::BeginConfigured(log);
    const ConfiguredState& state = SharedConfiguredState();
    const GaussianParams params = ReadGaussianParams(state.IniPath, state.SectionName, position);
    SmoothGaussian(pixels, width, height, maxValue, params);
    report.Dump(kDumpName, pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Gaussian ( %.03lf sec )\r\n",
               {LogLine(L"\t\t\t MaskSize   : %.02lf\r\n", {params.GAUSSIAN_SIZE}),
                LogLine(L"\t\t\t RepaetCnt  : %d\r\n", {params.GAUSSIAN_REPEAT})});  // sic
}

void RunPreGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                    LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    GaussFilterReplicate(pixels, width, height, maxValue, settings.PRE_GAUSSIAN_SIZE);
    report.Dump(kDumpName, pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Pre-Gaussian ( %d ms )\r\n",
               {LogLine(L"\t\t\t MaskSize   : %.02lfd\r\n", {settings.PRE_GAUSSIAN_SIZE})});  // sic
}

void RunPostGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    GaussFilterReplicate(pixels, width, height, maxValue, settings.POST_GAUSSIAN_SIZE);
    report.Dump(kDumpName, pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Post-Gaussian ( %d ms )\r\n",
               {LogLine(L"\t\t\t MaskSize   : %.02lf\r\n", {settings.POST_GAUSSIAN_SIZE})});
}

}  // namespace vastrelline
