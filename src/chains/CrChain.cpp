#include "chains/CrChain.h"

#include "chains/FixedFamily.h"
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
        WriteCrBackupSet(settings.SAVE_BACKUPPATH, call.sectionName, call.iniPath, call.input, call.output,
                         call.width, call.height);
    }
    return kSuccess;
}

}  // namespace vastrelline
