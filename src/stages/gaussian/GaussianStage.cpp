#include "stages/gaussian/GaussianStage.h"

#include <algorithm>
#include <vector>

#include "config/ConfiguredState.h"
#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "platform/TextFormat.h"
#include "report/StageReport.h"

namespace vastrelline {

namespace {

constexpr const wchar_t* kDumpName = L"%02d_PreGaussian.raw";

void SmoothOnce(const FrameView<uint16_t>& frame, int32_t maxValue, const GaussianParams& params) {
    const double sigma = params.GAUSSIAN_SIZE;
    if (params.GAUSSIAN_ReduceTimeRatio != 1) {
        ReducedScaleGaussian(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma,
                             params.GAUSSIAN_ReduceTimeRatio);
    } else if (params.GAUSSIAN_ProtectOutline != 0) {
        GaussFilterReplicate(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma);
    } else {
        GaussFilterWrap(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma);
    }
}

}  // namespace

void SmoothGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                    const GaussianParams& params) {
    // So many passes run without a look at what they changed: no usual number of passes pays for the copy.
    constexpr int32_t kUnwatchedPasses = 8;
    const FrameView<uint16_t> frame(pixels, width, height);
    std::vector<uint16_t> before;
    for (int32_t pass = 0; pass < params.GAUSSIAN_REPEAT; ++pass) {
        if (pass < kUnwatchedPasses) {
            SmoothOnce(frame, maxValue, params);
            continue;
        }
        // A pass depends on the frame alone, so after one that changes nothing no other changes anything.
        // Without this a key of 2147483647 would hang the host.
        before.assign(frame.begin(), frame.end());
        SmoothOnce(frame, maxValue, params);
        if (std::equal(before.begin(), before.end(), frame.begin())) return;
    }
}

void RunGaussianStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                      int32_t stageNumber) {
    // Unlike in most stages, the time holds the reading of the keys.
    const ConfiguredStageReport report;
    const ConfiguredState& state = SharedConfiguredState();
    const GaussianParams params = ReadGaussianParams(state.IniPath, state.SectionName, stageNumber);
    SmoothGaussian(pixels, width, height, maxValue, params);
    ConfiguredStageReport::Dump(kDumpName, pixels, width, height);
    report.Log(log, L"#### %02d:%02d:%02d \t: Gaussian ( %.03lf sec )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lf\r\n", {params.GAUSSIAN_SIZE}),
                FormatText(L"\t\t\t RepaetCnt  : %d\r\n", {params.GAUSSIAN_REPEAT})});  // sic
}

void RunPreGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                    LogFile& log, const FixedSettings& settings) {
    const FixedStageReport report;
    GaussFilterReplicate(pixels, width, height, maxValue, settings.PRE_GAUSSIAN_SIZE);
    FixedStageReport::Dump(kDumpName, pixels, width, height, dumpCounter);
    report.Log(log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: Pre-Gaussian ( %d ms )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lfd\r\n", {settings.PRE_GAUSSIAN_SIZE})});  // sic
}

void RunPostGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings) {
    const FixedStageReport report;
    GaussFilterReplicate(pixels, width, height, maxValue, settings.POST_GAUSSIAN_SIZE);
    FixedStageReport::Dump(kDumpName, pixels, width, height, dumpCounter);
    report.Log(log, settings.SAVE_LOG, L"#### %02d:%02d:%02d \t: Post-Gaussian ( %d ms )\r\n",
               {FormatText(L"\t\t\t MaskSize   : %.02lf\r\n", {settings.POST_GAUSSIAN_SIZE})});
}

}  // namespace vastrelline
