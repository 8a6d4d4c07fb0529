// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "chains/DriverCall.h"
#include "chains/FixedStageTable.h"
#include "chains/ReturnCode.h"
#include "config/FixedSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// One run of the fixed or of the CR chain: the steps that both take in the same way. A driver calls them in
// the order in which they stand here.
class FixedFamily {
public:
    explicit FixedFamily(const DriverCall& call);

    // The first argument test that fails: kNoProfile, kNoInput, kNoOutput.
    ReturnCode TestArguments() const;

    // Reads the settings and sets the process-wide state.
    void ReadSettings();

    // If logging is on: makes the log anew and writes the head of the run. Takes the start tick of the run.
    void OpenLog(std::wstring_view startLine);

    // Copies the input; from here on all work is in the output. Rescales frames of more than 16 bits, caps
    // saturated pixels, dumps the frame. Its pixels may come with the first step that asks for them.
    void CopyInput();

    // If the corner mask is on: builds it from the profile and fills the corners for the filters to come.
    void FillCorners();

    // Runs the stages that the settings switch on.
    void RunStages(FixedChain chain);

    // If the corner mask is on: gives the corners the background's value.
    void RestoreCorners();

    // All pixels of the output are there after it.
    void DumpResult();

    // If logging is on: writes the end of the run and closes the log.
    void CloseLog();

    const FixedSettings& Settings() const { return settings_; }

private:
    const DriverCall& call_;
    uint32_t startTick_ = 0;
    FixedSettings settings_;
    int32_t maxValue_ = 0;
    int32_t dumpCounter_ = 0;
    LogFile log_;
    std::optional<RowMask> cornerMask_;
    std::optional<TonedFrame> frame_;  // from CopyInput on
};

}  // namespace vastrelline
