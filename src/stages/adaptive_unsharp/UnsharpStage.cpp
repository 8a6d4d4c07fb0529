#include "stages/adaptive_unsharp/UnsharpStage.h"

#include <initializer_list>
#include <string>

#include "config/ConfiguredState.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/adaptive_unsharp/UnsharpModes.h"
#include "stages/adaptive_unsharp/UnsharpParams.h"

namespace vastrelline {

namespace {

// The dump's name with the mode filled in and the place of the dump number left for the dump.
std::wstring MakeDumpFormat(int32_t mode) { return FormatText(L"%%02d_Unsharp%d.raw", {mode}); }

template <typename WriteLog>
void LogParameters(const UnsharpParams& params, const WriteLog& write) {
    write({FormatText(L"\t\t\t Mode\t      : %d\r\n", {params.MODE_CONTRAST}),
           FormatText(L"\t\t\t Sigma\t      : %.2lf\r\n", {params.GAUSSIAN_SIZE_CONTRAST}),
           FormatText(L"\t\t\t EnhanceRatio : %.2lf\r\n", {params.ENAHCNED_RATIO_CONTRAST}),
           FormatText(L"\t\t\t NoiseWidth   : %d\r\n", {params.NOISE_WIDTH_CONTRAST})});
}

}  // namespace

void AdaptiveUnsharpStage(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, LogFile& logFile,
                          int32_t position) {
    // Unlike in most stages, the time holds the reading of the keys.
    const ConfiguredStageReport report;
    const ConfiguredState& state = SharedConfiguredState();
    const UnsharpParams params = ReadUnsharpParams(state.IniPath, state.SectionName, position);
    SharpenByMode(image, width, height, maxValue, params);
    ConfiguredStageReport::Dump(MakeDumpFormat(params.MODE_CONTRAST), image, width, height);
    LogParameters(params, [&](std::initializer_list<std::wstring> lines) {
        // The two blanks before the bracket are this stage's own.
        report.Log(logFile, L"#### %02d:%02d:%02d \t: AdaptiveUnsharp ( %.03lf sec  )\r\n", lines);
    });
}

void AdaptiveUnsharpStageFixed(uint16_t* image, uint16_t* mask, int32_t width, int32_t height,
                               int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                               const FixedSettings& settings) {
    const FixedStageReport report;
    const UnsharpParams params = UnsharpParamsOf(settings);
    SharpenByFixedMode(image, mask, width, height, maxValue, params);
    FixedStageReport::Dump(MakeDumpFormat(params.MODE_CONTRAST), image, width, height, dumpCounter);
    LogParameters(params, [&](std::initializer_list<std::wstring> lines) {
        report.Log(logFile, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: AdaptiveUnsharp ( %d ms )\r\n",
                   lines);
    });
}

}  // namespace vastrelline
