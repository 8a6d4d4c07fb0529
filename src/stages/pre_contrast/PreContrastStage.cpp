#include "stages/pre_contrast/PreContrastStage.h"

#include <string>
#include <vector>

#include "config/ConfiguredState.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/pre_contrast/PreContrast.h"
#include "stages/pre_contrast/PreContrastParams.h"

namespace vastrelline {

namespace {

constexpr const wchar_t* kSmoothedName = L"%02d_PreContrastGaussian.raw";
constexpr const wchar_t* kResultName = L"%02d_PreContrast.raw";

std::wstring MaskLine(const PreContrastParams& params) {
    return FormatText(L"\t\t\t MaskSize       : %.2lf\r\n", {params.PRECONTRAST_MASK});
}

std::wstring RatioLine(const PreContrastParams& params) {
    return FormatText(L"\t\t\t CurveRatio     : %.2lf\r\n", {params.PRECONTRAST_RATIO});
}

std::wstring RescaleLine(const PreContrastParams& params) {
    return FormatText(L"\t\t\t Rescale        : %d\r\n", {TruncateToInt32(params.PRECONTRAST_RESCALE)});
}

}  // namespace

void PreContrastStage(uint16_t* image, int32_t width, int32_t height, int32_t /*pixelCount*/,
                      int32_t maxValue, LogFile& logFile, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const PreContrastParams params = ReadPreContrastParams(state.IniPath, state.SectionName, position);
    if (params.PRECONTRAST_MASK == 0.0) return;

    const ConfiguredStageReport report;
    const std::vector<uint16_t> smoothed = ApplyPreContrast(image, width, height, maxValue, params);
    ConfiguredStageReport::DumpBeside(kSmoothedName, smoothed.data(), width, height);
    ConfiguredStageReport::Dump(kResultName, image, width, height);
    report.Log(logFile, L"#### %02d:%02d:%02d \t: PreConstrast ( %.03lf sec )\r\n",  // sic
               {MaskLine(params), RatioLine(params), RescaleLine(params)});
}

void PreContrastStageFixed(uint16_t* image, int32_t width, int32_t height, int32_t /*pixelCount*/,
                           int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                           const FixedSettings& settings) {
    const FixedStageReport report;
    const PreContrastParams params = PreContrastParamsOf(settings);
    const std::vector<uint16_t> smoothed = ApplyPreContrast(image, width, height, maxValue, params);
    FixedStageReport::DumpBeside(kSmoothedName, smoothed.data(), width, height, dumpCounter);
    FixedStageReport::Dump(kResultName, image, width, height, dumpCounter);
    report.Log(logFile, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: PreConstrast ( %d ms )\r\n",  // sic
               {MaskLine(params), RatioLine(params), RescaleLine(params)});
}

}  // namespace vastrelline
