// SPDX-License-Identifier: Apache-2.0
#include "stages/clahe/ClaheStage.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "config/ConfiguredState.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "pixels/AllocFrame.h"
#include "report/StageReport.h"
#include "stages/clahe/ClaheParams.h"
#include "stages/clahe/DarkArea.h"

namespace vastrelline {

namespace {

LogLine BlockSizeLine(int32_t blockSize) { return {L"\t\t\t BlockSize       : %d\r\n", {blockSize}}; }
LogLine BinsLine(int32_t bins) { return {L"\t\t\t HistogramBins   : %d\r\n", {bins}}; }
LogLine SlopeLine(double maxSlope) { return {L"\t\t\t CurveRatio      : %.2lf\r\n", {maxSlope}}; }

}  // namespace

void RunClaheStage(uint16_t* pixels, int32_t width, int32_t height, int32_t /*pixelCount*/, int32_t maxValue,
                   LogFile& log, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const ClaheParams params = ReadClaheParams(state.IniPath, state.SectionName, position);
    const StageReport report = StageReport::BeginConfigured(log);
    ClaheFrame(pixels, width, height, maxValue, params.BLOCK_SIZE, params.HISTO_BINS, params.MAX_SLOPE);
    report.Log(L"#### %02d:%02d:%02d \t: CLAHE ( %.03lf sec )\r\n",
               {BlockSizeLine(params.BLOCK_SIZE), BinsLine(params.HISTO_BINS), SlopeLine(params.MAX_SLOPE)});
    report.Dump(L"%02d_clahe.raw", pixels, width, height);
}

void RunClahe(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
              int32_t& dumpCounter, LogFile& log, const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(log, dumpCounter, settings);
    ScratchVector<uint16_t> before = AllocFrame<uint16_t>(width, height);
    const size_t known = std::min(before.size(), static_cast<size_t>(std::max(pixelCount, 0)));
    std::fill(std::copy_n(pixels, known, before.begin()), before.end(), uint16_t{0});
    ClaheFrame(pixels, width, height, maxValue, settings.BLOCK_SIZE, settings.HISTO_BINS, settings.MAX_SLOPE);
    report.DumpBeside(L"%02d_clahe_00.raw", before.data(), width, height);
    report.DumpBeside(L"%02d_clahe_01.raw", pixels, width, height);
    if (settings.CORRECTVAL != 0) CorrectDarkArea(pixels, before.data(), width, height, maxValue);
    report.Log(
        L"#### %02d:%02d:%02d \t: CLAHE ( %d ms )\r\n",
        {BlockSizeLine(settings.BLOCK_SIZE), BinsLine(settings.HISTO_BINS), SlopeLine(settings.MAX_SLOPE)});
    report.Dump(L"%02d_clahe.raw", pixels, width, height);
}

}  // namespace vastrelline
