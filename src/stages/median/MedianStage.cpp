// SPDX-License-Identifier: Apache-2.0
#include "stages/median/MedianStage.h"

#include <string>

#include "config/ConfiguredState.h"
#include "operators/median/MedianWindow.h"
#include "report/StageReport.h"
#include "stages/median/MedianParams.h"
#include "stages/median/MedianPasses.h"

namespace vastrelline {

namespace {

LogLine FormatMaskLine(int32_t mask) { return {L"\t\t\t MaskSize   : %d\r\n", {mask}}; }

}  // namespace

void RunMedianStage(uint16_t* pixels, int32_t width, int32_t height, LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const MedianParams params = ReadMedianParams(state.IniPath, state.SectionName, position);

    const StageReport report = StageReport::BeginConfigured(log);
    FilterMedianPasses(pixels, width, height, params);
    report.Dump(L"%02d_Median.raw", pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Median ( %.03lf sec )\r\n",
               {FormatMaskLine(params.MEDIAN_SIZE),
                LogLine(L"\t\t\t RepaetCnt  : %d\r\n", {params.MEDIAN_REPEAT})});  // sic
}

void RunPreMedian(uint16_t* pixels, int32_t width, int32_t height, int32_t& dumpCounter, LogFile& log,
                  const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    MedianSquare(pixels, width, height, settings.PRE_MEDIAN_SIZE);
    report.Dump(L"%02d_PreMedian.raw", pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Pre-Median ( %d ms )\r\n",
               {FormatMaskLine(settings.PRE_MEDIAN_SIZE)});
}

void RunPostMedian(uint16_t* pixels, int32_t width, int32_t height, int32_t /*maxValue*/,
                   int32_t& dumpCounter, LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    FilterMedianSquarePasses(pixels, width, height, settings.POST_MEDIAN_SIZE, settings.POST_MEDIAN_REPEAT);
    report.Dump(L"%02d_Post_Median.raw", pixels, width, height);
    report.Log(L"#### %02d:%02d:%02d \t: Post-NoiseReduction ( %d ms )\r\n",
               {FormatMaskLine(settings.POST_MEDIAN_SIZE),
                LogLine(L"\t\t\t RepeatCnt  : %d\r\n", {settings.POST_MEDIAN_REPEAT})});
}

}  // namespace vastrelline
