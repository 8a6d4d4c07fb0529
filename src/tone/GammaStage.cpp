#include "tone/GammaStage.h"

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "diagnostics/StageReport.h"
#include "platform/TextFormat.h"
#include "tone/GammaCurve.h"
#include "tone/GammaParams.h"

namespace vastrelline {

void RunGammaStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                   int32_t stageNumber) {
    const ConfiguredState& state = SharedConfiguredState();
    const GammaParams params = ReadGammaParams(state.IniPath, state.SectionName, stageNumber);
    CommonSettings settings;
    ReadCommonSettings(state.IniPath, state.SectionName, settings);

    const ConfiguredStageReport report;
    const double gamma = ChooseGamma(pixels, width, height, settings.OUTPUTRANGE, params.POST_GAMMA_RATIO);
    ApplyGammaCurve(pixels, width, height, maxValue, settings.OUTPUTRANGE, gamma, 0, 0, state.SaveImage,
                    state.WritePath, state.DumpNumber);
    // The curve file and this dump share one number.
    ConfiguredStageReport::Dump(L"%02d_Result_Gamma.raw", pixels, width, height);
    report.Log(log, L"#### %02d:%02d:%02d \t: Gamma Curve ( %.03lf sec )\r\n",
               {FormatText(L"\t\t\t Gamma : %.2lf\r\n", {gamma})});
}

}  // namespace vastrelline
