// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/HdrStage.h"

#include "config/ConfiguredState.h"
#include "report/StageReport.h"
#include "stages/hdr/HdrFrame.h"
#include "stages/hdr/HdrParams.h"

namespace vastrelline {

void RunHdrStage(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/, int32_t maxValue,
                 LogFile& log, int32_t position) {
    // Logged like the keys, but not to be set.
    constexpr int32_t kEdgeMax = 1;
    constexpr int32_t kEdgeOffset = 1;
    const ConfiguredState& state = SharedConfiguredState();
    const HdrParams params = ReadHdrParams(state.IniPath, state.SectionName, position);
    const StageReport report = StageReport::BeginConfigured(log);
    HdrFrame(pixels, width, height, maxValue, params.HDR_BLOCK_SIZE, params.HDR_HISTO_BINS,
             params.HDR_CLIp_LIMIT, kEdgeMax, kEdgeOffset, params.MAX_LAMBDA, params.WF_SLOPE,
             params.ALPHA_NORM, params.ALPHA_HE, params.LAYER);
    report.Log(L"#### %02d:%02d:%02d \t: HDR ( %.03lf sec )\r\n",
               {LogLine(L"\t\t\t BlockSize       : %d\r\n", {params.HDR_BLOCK_SIZE}),
                LogLine(L"\t\t\t HistogramBins   : %d\r\n", {params.HDR_HISTO_BINS}),
                LogLine(L"\t\t\t CurveRatio      : %.2lf\r\n", {params.HDR_CLIp_LIMIT}),
                LogLine(L"\t\t\t Maximum of edge enhancement       : %d\r\n", {kEdgeMax}),
                LogLine(L"\t\t\t Edge enhance offset   : %d\r\n", {kEdgeOffset}),
                LogLine(L"\t\t\t Improv Calc. speed for higher layer   : %d\r\n", {params.LAYER}),
                LogLine(L"\t\t\t Maximum of contrast enhancement      : %.2lf\r\n", {params.MAX_LAMBDA}),
                LogLine(L"\t\t\t Adjust slope of wf      : %.2lf\r\n", {params.WF_SLOPE}),
                LogLine(L"\t\t\t Fraction of normal Image      : %.2lf\r\n", {params.ALPHA_NORM}),
                LogLine(L"\t\t\t Fraction of hed Image      : %.2lf\r\n", {params.ALPHA_HE})});
    report.Dump(L"%02d_HDR.raw", pixels, width, height);
}

}  // namespace vastrelline
