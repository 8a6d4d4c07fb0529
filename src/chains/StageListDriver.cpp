// SPDX-License-Identifier: Apache-2.0
#include "chains/StageListDriver.h"

#include "chains/ConfiguredFamily.h"

namespace vastrelline {

ReturnCode DriveStageList(const DriverCall& call, const StageListOptions& options) {
    ConfiguredFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings(options.sensorFolder, options.sensorMode);
    run.OpenLog();
    run.CopyInput();
    run.LimitPixels();
    run.FillCorners(options.geometry);
    run.NormaliseRange();
    run.Invert();
    run.RunStageList(options.stages);
    run.RestoreCorners();
    run.CloseLog(kConfiguredEndLine);
    run.SaveBackup();
    run.StoreSensorValues();
    return kSuccess;
}

}  // namespace vastrelline
