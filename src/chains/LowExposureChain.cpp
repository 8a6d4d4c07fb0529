// SPDX-License-Identifier: Apache-2.0
#include "chains/LowExposureChain.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "chains/ConfiguredFamily.h"
#include "config/DoseRecord.h"
#include "operators/histogram/OtsuThreshold.h"
#include "pixels/FrameLimits.h"
#include "platform/MessageDialog.h"
#include "platform/TextFormat.h"
#include "sensor/ExposureDecision.h"

namespace vastrelline {

namespace {

constexpr const wchar_t* kLowSection = L"IP_LOWMODE";

// A low frame's stages. Each stands at the position that names its keys.
constexpr std::array kLowSequence = {
    StageId::Gaussian, StageId::PreProcessing, StageId::HistogramStretch, StageId::CLAHE,
    StageId::CLAHE,    StageId::LinearLUT,     StageId::GammaLUT,
};

// Decides on the frame as it came, before anything else changes it.
bool IsExposureLow(const DriverCall& call, ConfiguredFamily& run) {
    // Frames of more bits are rescaled later only, but no pixel reaches past 16: the levels above are empty.
    const int32_t maxValue = std::min(run.MaxValue(), kTopPixel);
    const std::vector<uint32_t> histogram = run.Frame().Histogram(maxValue);
    const int32_t threshold = ComputeOtsuThreshold(histogram, static_cast<double>(call.width) * call.height);
    DoseRecord record;
    const int32_t isLow = ClassifyExposure(call.output, call.width, call.height, histogram, threshold,
                                           run.Settings().SETCLIPBIN, maxValue, record);
    SetSharedDoseRecord(record);
    return isLow != 0;
}

void ShowDecision(bool isLow) {
    constexpr std::wstring_view kNormalText =
        L"[Normal Exposure Image] \nObject median value: %d \n\n\nLow signal histogram: %d \n"
        L"Total object histogram: %d \nLow_Thd: %.3f";
    constexpr std::wstring_view kLowText =
        L"[Low Exposure Image] \nObject median value: %d \n\n\nLow signal histogram: %d \n"
        L"Total object histogram: %d \nLow_Thd: %.3f";
    const DoseRecord record = SharedDoseRecord();
    ShowMessage(FormatText(isLow ? kLowText : kNormalText,
                           {record.ObjectMedian, record.LowSignal, record.ObjectTotal, record.LowRatio}),
                MessageIcon::None);
}

void RunLowSequence(ConfiguredFamily& run) {
    int32_t position = 0;
    for (const StageId stage : kLowSequence) run.RunStageAt(AllStages(), stage, position++);
}

}  // namespace

ReturnCode RunLowExposureChain(const DriverCall& call, const SensorGeometry* geometry) {
    ConfiguredFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings(L"", 0);
    run.OpenLog();
    run.CopyInput();
    const bool isLow = IsExposureLow(call, run);
    if (isLow) run.SwitchSection(kLowSection);
    if (run.Settings().MSGBOX_ENABLE != 0) {
        // While it shows the message a host may look at both frames, change them, or process others.
        run.Frame().Change();
        ShowDecision(isLow);
    }
    run.LimitPixels();
    run.FillCorners(geometry);
    run.NormaliseRange();
    run.Invert();
    if (isLow)
        RunLowSequence(run);
    else
        run.RunStageList(AllStages());
    run.RestoreCorners();
    run.CloseLog(kLowExposureEndLine);
    run.SaveBackup();
    run.StoreSensorValues();
    return kSuccess;
}

}  // namespace vastrelline
