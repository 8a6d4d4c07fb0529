// SPDX-License-Identifier: Apache-2.0
#include "chains/ConfiguredFamily.h"

#include "chains/TonedCopy.h"
#include "config/ConfiguredState.h"
#include "config/StageId.h"
#include "pixels/Truncate.h"
#include "platform/Clock.h"
#include "report/BackupSet.h"
#include "report/RunDumps.h"
#include "sensor/MaskedPixels.h"
#include "sensor/TargetRange.h"
#include "sensor/TonedSteps.h"
#include "stages/inversion/InversionStage.h"

namespace vastrelline {

ConfiguredFamily::ConfiguredFamily(const DriverCall& call)
    : startTick_(TickCount()), call_(call), sectionName_(call.sectionName) {}

ReturnCode ConfiguredFamily::TestArguments() const {
    const ReturnCode code = TestDriverArguments(call_.iniPath, call_.input, call_.output);
    if (code != kSuccess) return code;
    return sectionName_.empty() ? kNoSection : kSuccess;
}

void ConfiguredFamily::ReadSettings(const std::wstring& sensorFolder, int32_t sensorMode) {
    SyncSensorSettings(call_.iniPath, sensorFolder, sensorMode);
    ReadCommonSettings(call_.iniPath, sectionName_, settings_);
    ConfiguredState& state = SharedConfiguredState();
    state.IniPath = call_.iniPath;
    state.SectionName = sectionName_;
    state.LogPath = MakeLogPath(call_.iniPath);
    state.SaveLog = settings_.SAVE_LOG;
    state.WritePath = settings_.WRITE_PATH;
    state.SaveImage = settings_.SAVE_IMAGE;
}

void ConfiguredFamily::OpenLog() {
    const CalendarTime startTime = LocalTime();
    if (settings_.SAVE_LOG == 0) return;
    log_.Open(SharedConfiguredState().LogPath, OpenMode::AppendExclusive);
    WriteLogHead(log_, kConfiguredStartLine, startTime, settings_.VERSION, sectionName_);
}

void ConfiguredFamily::CopyInput() {
    maxValue_ = MaxValueOfBits(settings_.BITSTORED);
    CopyTonedInput(call_, frame_);
}

void ConfiguredFamily::SwitchSection(const std::wstring& sectionName) {
    sectionName_ = sectionName;
    SharedConfiguredState().SectionName = sectionName;
}

void ConfiguredFamily::LimitPixels() {
    maxValue_ = RescaleTonedBits(Frame(), settings_.BITSTORED);
    CapTonedSaturation(Frame(), settings_.SATURATION_VALUE);
    RunDumps::Configured().Dump(L"%02d_OriginalImage.raw", Frame());
}

void ConfiguredFamily::FillCorners(const SensorGeometry* geometry) {
    if (settings_.INTRAORAL_MASK == 0) return;
    cornerMask_.emplace(call_.width, call_.height);
    if (geometry != nullptr)
        BuildTonedMask(Frame(), *cornerMask_, *geometry);
    else
        BuildTonedMaskFromProfile(Frame(), *cornerMask_, call_.iniPath);
    FillTonedPixels(Frame(), *cornerMask_, maxValue_);
}

void ConfiguredFamily::NormaliseRange() {
    TargetRangeParams target;
    ReadTargetRange(call_.iniPath, kSensorSection, target);
    ApplyTargetRange(Frame(), target.TargetRange, target.MinimumValue, target.MaxCut, target.MinCut);
}

void ConfiguredFamily::Invert() {
    if (settings_.INVERSE_INTENSITY == 0) return;
    RunInversion(Frame(), maxValue_, settings_);
}

void ConfiguredFamily::RunStageList(std::span<const StageEntry> stages) {
    const std::wstring& iniPath = call_.iniPath;
    for (const int32_t position : ListStagePositions(iniPath, sectionName_, settings_.FunctionCount)) {
        const int32_t stageNumber = ReadStageNumber(iniPath, sectionName_, position);
        RunStageAt(stages, static_cast<StageId>(stageNumber), position);
    }
}

void ConfiguredFamily::RunStageAt(std::span<const StageEntry> stages, StageId stage, int32_t position) {
    RunStage(stages, static_cast<int32_t>(stage), {{Frame(), maxValue_, log_}, position});
}

void ConfiguredFamily::RestoreCorners() {
    uint16_t* const pixels = Frame().Change().begin();
    if (settings_.INTRAORAL_MASK != 0) {
        const int32_t isInverted = settings_.INVERSE_INTENSITY != 0 ? 1 : 0;
        RestoreMaskedPixels(pixels, *cornerMask_, isInverted);
        cornerMask_.reset();
    }
    RunDumps::Configured().Dump(L"%02d_Result.raw", pixels, call_.width, call_.height);
}

void ConfiguredFamily::CloseLog(std::wstring_view endLine) {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (settings_.SAVE_LOG == 0) return;
    WriteLogEnd(log_, endLine, LocalTime(), elapsedMs / 1000.0);
    log_.Close();
}

void ConfiguredFamily::SaveBackup() const {
    if (settings_.SAVE_BACKUP == 0) return;
    const BackupWindow window{settings_.OUTPUTRANGE / 2, WrappingAdd(settings_.OUTPUTRANGE, 1)};
    WriteBackupSet(settings_.SAVE_BACKUPPATH, sectionName_, call_.input, call_.output, call_.width,
                   call_.height, window);
}

void ConfiguredFamily::StoreSensorValues() const { StoreSensorSettings(call_.iniPath); }

}  // namespace vastrelline
