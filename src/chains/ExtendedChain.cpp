#include "chains/ExtendedChain.h"

#include "chains/ConfiguredFamily.h"

namespace vastrelline {

ReturnCode RunExtendedChain(const DriverCall& call, const std::wstring& sensorFolder, int32_t sensorMode) {
    ConfiguredFamily run(call);
    if (const ReturnCode code = run.TestArguments(); code != kSuccess) return code;
    if (!HasPixels(call.width, call.height)) return kSuccess;

    run.ReadSettings(sensorFolder, sensorMode);
    run.OpenLog();
    run.CopyInput();
    run.LimitPixels();
    run.FillCorners(nullptr);
    run.NormaliseRange();
    run.Invert();
    run.RunStageList(AllStages());
    run.RestoreCorners();
    run.CloseLog(kConfiguredEndLine);
    run.SaveBackup();
    return kSuccess;
}

}  // namespace vastrelline
