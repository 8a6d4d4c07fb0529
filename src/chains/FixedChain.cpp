// SPDX-License-Identifier: Apache-2.0
#include "chains/FixedChain.h"

#include "chains/FixedFamily.h"
#include "report/BackupSet.h"

namespace vastrelline {

ReturnCode RunFixedChain(const DriverCall& call) {
    FixedFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings();
    run.OpenLog(kFixedStartLine);
    run.CopyInput();
    run.FillCorners();
    run.RunStages(FixedChain::Fixed);
    run.RestoreCorners();
    run.DumpResult();
    run.CloseLog();
    const FixedSettings& settings = run.Settings();
    if (settings.SAVE_BACKUP != 0) {
        WriteBackupSet(settings.SAVE_BACKUPPATH, call.sectionName, call.input, call.output, call.width,
                       call.height, kTwelveBitWindow);
    }
    return kSuccess;
}

}  // namespace vastrelline
