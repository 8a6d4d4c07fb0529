#include "stages/adaptive_unsharp/UnsharpStage.h"

#include <initializer_list>
#include <string>

#include "config/ConfiguredState.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"
#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/BandDifferenceUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "stages/adaptive_unsharp/UnsharpParams.h"

namespace vastrelline {

namespace {

enum class UnsharpMode : int32_t {
    EdgeWeighted = 1,
    HistogramShaped = 3,
    BandDifference = 4,
    ActivityWeighted = 5,
};

// The modes that both chains have.
void SharpenInEitherChain(uint16_t* image, uint16_t* mask, int32_t width, int32_t height, int32_t maxValue,
                          const UnsharpParams& params) {
    const double sigma = params.GAUSSIAN_SIZE_CONTRAST;
    const double ratio = params.ENAHCNED_RATIO_CONTRAST;
    const int32_t noise = params.NOISE_WIDTH_CONTRAST;
    const int32_t reduce = params.ReduceTimeRatio_CONTRAST;
    switch (static_cast<UnsharpMode>(params.MODE_CONTRAST)) {
        case UnsharpMode::EdgeWeighted:
            EdgeWeightedUnsharp(image, width, height, maxValue, sigma, ratio, noise, reduce);
            break;
        case UnsharpMode::HistogramShaped:
            HistogramShapedUnsharp(image, width, height, maxValue, sigma, ratio, noise, mask);
            break;
        case UnsharpMode::BandDifference:
            BandDifferenceUnsharp(image, width, height, maxValue, sigma, ratio, noise * 0.01, reduce);
            break;
        default:
            break;
    }
}

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
                          int32_t stageNumber) {
    // Unlike in most stages, the time holds the reading of the keys.
    const ConfiguredStageReport report;
    const ConfiguredState& state = SharedConfiguredState();
    const UnsharpParams params = ReadUnsharpParams(state.IniPath, state.SectionName, stageNumber);
    if (static_cast<UnsharpMode>(params.MODE_CONTRAST) == UnsharpMode::ActivityWeighted) {
        ActivityWeightedUnsharp(image, width, height, maxValue, params.NOISE_WIDTH_CONTRAST,
                                params.ReduceTimeRatio_CONTRAST, params.PROTECTOUTLINE_CONTRAST,
                                params.GAUSSIAN_SIZE_CONTRAST, params.ENAHCNED_RATIO_CONTRAST);
    } else {
        SharpenInEitherChain(image, nullptr, width, height, maxValue, params);
    }
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
    UnsharpParams params;
    params.GAUSSIAN_SIZE_CONTRAST = settings.GAUSSIAN_SIZE_CONTRAST;
    params.ENAHCNED_RATIO_CONTRAST = settings.ENAHCNED_RATIO_CONTRAST;
    params.NOISE_WIDTH_CONTRAST = settings.NOISE_WIDTH_CONTRAST;
    params.MODE_CONTRAST = settings.MODE_CONTRAST;
    SharpenInEitherChain(image, mask, width, height, maxValue, params);
    FixedStageReport::Dump(MakeDumpFormat(params.MODE_CONTRAST), image, width, height, dumpCounter);
    LogParameters(params, [&](std::initializer_list<std::wstring> lines) {
        report.Log(logFile, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: AdaptiveUnsharp ( %d ms )\r\n",
                   lines);
    });
}

}  // namespace vastrelline
