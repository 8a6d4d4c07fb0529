// SPDX-License-Identifier: Apache-2.0
#include "chains/CrChain.h"

#include "chains/FixedFamily.h"
#include "config/CRegistryIO.h"
#include "report/BackupSet.h"

namespace vastrelline {

ReturnCode RunCrChain(const DriverCall& call) {
    FixedFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings();
    run.OpenLog(kCrStartLine);
    run.CopyInput();
    run.RunStages(FixedChain::Cr);
    run.DumpResult();
    run.CloseLog();
    const FixedSettings& settings = run.Settings();
    if (settings.SAVE_BACKUP != 0) {
        const CRegistryIO profile(nullptr, call.iniPath.c_str(), 1);
        WriteCrBackupSet(settings.SAVE_BACKUPPATH, call.sectionName, profile.FileBytes(), call.input,
                         call.output, call.width, call.height);
    }
    return kSuccess;
}

}  // namespace vastrelline
