// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/UnsharpStage.h"

#include <string>

#include "config/ConfiguredState.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "report/TellIfPossible.h"
#include "stages/adaptive_unsharp/UnsharpModes.h"
#include "stages/adaptive_unsharp/UnsharpParams.h"

namespace vastrelline {

namespace {

// The dump's name with the mode filled in and the place of the dump number left for the dump.
std::wstring MakeDumpFormat(int32_t mode) { return FormatText(L"%%02d_Unsharp%d.raw", {mode}); }

void LogSharpening(const StageReport& report, const wchar_t* stageLine, const UnsharpParams& params) {
    report.Log(stageLine, {LogLine(L"\t\t\t Mode\t      : %d\r\n", {params.MODE_CONTRAST}),
                           LogLine(L"\t\t\t Sigma\t      : %.2lf\r\n", {params.GAUSSIAN_SIZE_CONTRAST}),
                           LogLine(L"\t\t\t EnhanceRatio : %.2lf\r\n", {params.ENAHCNED_RATIO_CONTRAST}),
                           LogLine(L"\t\t\t NoiseWidth   : %d\r\n", {params.NOISE_WIDTH_CONTRAST})});
}

}  // namespace

void AdaptiveUnsharpStage(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, LogFile& logFile,
                          int32_t position) {
    // Unlike in most stages, the time holds the reading of the keys.
    const StageReport report = StageReport::BeginConfigured(logFile);
    const ConfiguredState& state = SharedConfiguredState();
    const UnsharpParams params = ReadUnsharpParams(state.IniPath, state.SectionName, position);
    SharpenByMode(image, width, height, maxValue, params);
    TellIfPossible([&] { report.Dump(MakeDumpFormat(params.MODE_CONTRAST), image, width, height); });
    // The two blanks before the bracket are this stage's own.
    LogSharpening(report, L"#### %02d:%02d:%02d \t: AdaptiveUnsharp ( %.03lf sec  )\r\n", params);
}

void AdaptiveUnsharpStageFixed(uint16_t* image, uint16_t* mask, int32_t width, int32_t height,
                               int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                               const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(logFile, dumpCounter, settings);
    const UnsharpParams params = UnsharpParamsOf(settings);
    SharpenByFixedMode(image, mask, width, height, maxValue, params);
    TellIfPossible([&] { report.Dump(MakeDumpFormat(params.MODE_CONTRAST), image, width, height); });
    LogSharpening(report, L"#### %02d:%02d:%02d \t: AdaptiveUnsharp ( %d ms )\r\n", params);
}

}  // namespace vastrelline
