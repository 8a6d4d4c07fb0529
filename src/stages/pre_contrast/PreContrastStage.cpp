// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrastStage.h"

#include "config/ConfiguredState.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "report/StageReport.h"
#include "stages/pre_contrast/PreContrast.h"
#include "stages/pre_contrast/PreContrastParams.h"

namespace vastrelline {

namespace {

void RaiseContrast(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                   const PreContrastParams& params, const StageReport& report, const wchar_t* stageLine) {
    const ScratchVector<uint16_t> smoothed = ApplyPreContrast(image, width, height, maxValue, params);
    report.DumpBeside(L"%02d_PreContrastGaussian.raw", smoothed.data(), width, height);
    report.Dump(L"%02d_PreContrast.raw", image, width, height);
    report.Log(stageLine,
               {LogLine(L"\t\t\t MaskSize       : %.2lf\r\n", {params.PRECONTRAST_MASK}),
                LogLine(L"\t\t\t CurveRatio     : %.2lf\r\n", {params.PRECONTRAST_RATIO}),
                LogLine(L"\t\t\t Rescale        : %d\r\n", {TruncateToInt32(params.PRECONTRAST_RESCALE)})});
}

}  // namespace

void PreContrastStage(uint16_t* image, int32_t width, int32_t height, int32_t /*pixelCount*/,
                      int32_t maxValue, LogFile& logFile, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const PreContrastParams params = ReadPreContrastParams(state.IniPath, state.SectionName, position);
    if (params.PRECONTRAST_MASK == 0.0) return;

    const StageReport report = StageReport::BeginConfigured(logFile);
    RaiseContrast(image, width, height, maxValue, params, report,
                  L"#### %02d:%02d:%02d \t: PreConstrast ( %.03lf sec )\r\n");  // sic
}

void PreContrastStageFixed(uint16_t* image, int32_t width, int32_t height, int32_t /*pixelCount*/,
                           int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                           const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(logFile, dumpCounter, settings);
    const PreContrastParams params = PreContrastParamsOf(settings);
    RaiseContrast(image, width, height, maxValue, params, report,
                  L"#### %02d:%02d:%02d \t: PreConstrast ( %d ms )\r\n");  // sic
}

}  // namespace vastrelline
