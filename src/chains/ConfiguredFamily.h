// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "chains/StageTable.h"
#include "config/CommonSettings.h"
#include "config/SensorSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// One run of a driver of the configured family, that is of the configured, the low-exposure or the extended
// chain: the steps that they take in the same way. A driver calls them in the order in which they stand here
// and adds its own between them.
class ConfiguredFamily {
public:
    // Takes the start tick of the run.
    explicit ConfiguredFamily(const DriverCall& call);

    // The first argument test that fails: kNoProfile, kNoInput, kNoOutput, kNoSection.
    ReturnCode TestArguments() const;

    // Lets the sensor's values count in place of the profile's, reads the settings, sets the process-wide
    // state.
    //
    // sensorFolder, sensorMode   as SyncSensorSettings
    void ReadSettings(const std::wstring& sensorFolder, int32_t sensorMode);

    // If logging is on: opens the log and writes the head of the run.
    void OpenLog();

    // Copies the input; from here on all work is in the output. Its pixels may come with the first step that
    // asks for them, and are all there after RestoreCorners.
    void CopyInput();

    // The driver's own steps between CopyInput and LimitPixels may look at these.
    const CommonSettings& Settings() const { return settings_; }
    int32_t MaxValue() const { return maxValue_; }
    TonedFrame& Frame() { return *frame_; }

    // Lets the stages read their keys from another section, which also names the backup.
    void SwitchSection(const std::wstring& sectionName);

    // Rescales frames of more than 16 bits, caps saturated pixels, dumps the frame.
    void LimitPixels();

    // If the corner mask is on: builds it and fills the corners for the filters to come.
    //
    // geometry   the caller's geometry of this frame, or null for the profile's
    void FillCorners(const SensorGeometry* geometry);

    void NormaliseRange();

    // If inversion is on.
    void Invert();

    // Runs the stages that the profile lists.
    void RunStageList(std::span<const StageEntry> stages);

    // Runs one stage with the keys of a position.
    void RunStageAt(std::span<const StageEntry> stages, StageId stage, int32_t position);

    // If the corner mask is on: gives the corners the background's value. Dumps the result.
    void RestoreCorners();

    // If logging is on: writes the end of the run and closes the log.
    void CloseLog(std::wstring_view endLine);

    // If backups are on.
    void SaveBackup() const;

    // Brings the sensor's values to the profile's file. Last, for it may have to wait for another program.
    void StoreSensorValues() const;

private:
    uint32_t startTick_;
    const DriverCall& call_;
    std::wstring sectionName_;
    CommonSettings settings_;
    int32_t maxValue_ = 0;
    LogFile log_;
    std::optional<RowMask> cornerMask_;
    std::optional<TonedFrame> frame_;  // from CopyInput on
};

}  // namespace vastrelline
