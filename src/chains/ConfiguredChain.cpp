#include "chains/ConfiguredChain.h"

#include "chains/ConfiguredFamily.h"

namespace vastrelline {

ReturnCode RunConfiguredChain(const DriverCall& call, const SensorGeometry* geometry) {
    ConfiguredFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings(L"", 0);
    run.OpenLog();
    run.CopyInput();
    run.LimitPixels();
    run.FillCorners(geometry);
    run.NormaliseRange();
    run.Invert();
    run.RunStageList(ConfiguredStages());
    run.RestoreCorners();
    run.CloseLog(kConfiguredEndLine);
    run.SaveBackup();
    return kSuccess;
}

}  // namespace vastrelline
