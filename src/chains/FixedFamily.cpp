// SPDX-License-Identifier: Apache-2.0
#include "chains/FixedFamily.h"

#include "chains/TonedCopy.h"
#include "config/FixedState.h"
#include "pixels/AllocFrame.h"
#include "platform/Clock.h"
#include "report/RunDumps.h"
#include "sensor/MaskedPixels.h"
#include "sensor/TonedSteps.h"

namespace vastrelline {

FixedFamily::FixedFamily(const DriverCall& call) : call_(call) {}

ReturnCode FixedFamily::TestArguments() const {
    return TestDriverArguments(call_.iniPath, call_.input, call_.output);
}

void FixedFamily::ReadSettings() {
    ReadFixedSettings(call_.iniPath, call_.sectionName, settings_);
    FixedState& state = SharedFixedState();
    state.IniPath = call_.iniPath;
    state.SectionName = call_.sectionName;
    state.LogPath = MakeLogPath(call_.iniPath);
    state.WritePath = settings_.WRITE_PATH;
    state.SaveImage = settings_.SAVE_IMAGE;
}

void FixedFamily::OpenLog(std::wstring_view startLine) {
    const CalendarTime startTime = LocalTime();
    if (settings_.SAVE_LOG != 0) {
        log_.Open(SharedFixedState().LogPath, OpenMode::TruncateExclusive);
        WriteLogHead(log_, startLine, startTime, settings_.VERSION, call_.sectionName);
    }
    startTick_ = TickCount();
}

void FixedFamily::CopyInput() {
    CopyTonedInput(call_, frame_);
    maxValue_ = RescaleTonedBits(*frame_, settings_.BITSTORED);
    CapTonedSaturation(*frame_, settings_.SATURATION_VALUE);
    RunDumps::Fixed(dumpCounter_).Dump(L"%02d_OriginalImage.raw", *frame_);
}

void FixedFamily::FillCorners() {
    if (settings_.INTRAORAL_MASK == 0) return;
    cornerMask_.emplace(call_.width, call_.height);
    BuildTonedMaskFromProfile(*frame_, *cornerMask_, call_.iniPath);
    FillTonedPixels(*frame_, *cornerMask_, maxValue_);
}

void FixedFamily::RunStages(FixedChain chain) {
    // The frame that the stretch marks its dark tail in, and that the unsharp stage reads.
    ScratchVector<uint16_t> stretched;
    if (settings_.HISTOGRAM_STRETCH != 0) stretched = AllocZeroed<uint16_t>(call_.width, call_.height);
    RunFixedStages(chain, {{*frame_, maxValue_, log_},
                           stretched.empty() ? nullptr : stretched.data(),
                           dumpCounter_,
                           settings_});
}

void FixedFamily::RestoreCorners() {
    if (settings_.INTRAORAL_MASK == 0) return;
    const int32_t isInverted = settings_.INVERSE_INTENSITY != 0 ? 1 : 0;
    RestoreMaskedPixels(frame_->Change().begin(), *cornerMask_, isInverted);
    cornerMask_.reset();
}

void FixedFamily::DumpResult() {
    RunDumps::Fixed(dumpCounter_).Dump(L"%02d_Result.raw", frame_->Read().begin(), call_.width, call_.height);
}

void FixedFamily::CloseLog() {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (settings_.SAVE_LOG == 0) return;
    WriteLogEnd(log_, kFixedEndLine, LocalTime(), static_cast<int32_t>(elapsedMs));
    log_.Close();
}

}  // namespace vastrelline
