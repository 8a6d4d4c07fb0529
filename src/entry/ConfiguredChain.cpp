#include "entry/ConfiguredChain.h"

#include <algorithm>
#include <vector>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "config/StageId.h"
#include "diagnostics/LogFile.h"
#include "diagnostics/StageReport.h"
#include "entry/StageTable.h"
#include "image/AllocZeroed.h"
#include "platform/Clock.h"
#include "prepare/MaskedPixels.h"
#include "prepare/SaturationCap.h"

namespace vastrelline {

namespace {

void SetConfiguredState(const std::wstring& iniPath, const std::wstring& sectionName,
                        const CommonSettings& settings) {
    ConfiguredState& state = SharedConfiguredState();
    state.IniPath = iniPath;
    state.SectionName = sectionName;
    state.LogPath = MakeLogPath(iniPath);
    state.SaveLog = settings.SAVE_LOG;
    state.WritePath = settings.WRITE_PATH;
    state.SaveImage = settings.SAVE_IMAGE;
}

}  // namespace

ReturnCode RunConfiguredChain(const uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                              const std::wstring& iniPath, const std::wstring& sectionName) {
    const uint32_t startTick = TickCount();
    if (const ReturnCode code = TestDriverArguments(iniPath, input, output); code != kSuccess) return code;
    if (sectionName.empty()) return kNoSection;
    if (width <= 0 || height <= 0) return kSuccess;
    const int32_t pixelCount = CountPixels(width, height);

    CommonSettings settings;
    ReadCommonSettings(iniPath, sectionName, settings);
    SetConfiguredState(iniPath, sectionName, settings);
    const ConfiguredState& state = SharedConfiguredState();

    LogFile log;
    const CalendarTime startTime = LocalTime();
    if (state.SaveLog != 0) {
        log.Open(state.LogPath, OpenMode::AppendExclusive);
        WriteLogHead(log, kConfiguredStartLine, startTime, settings.VERSION, sectionName);
    }

    // From here on all work is in `output`.
    std::copy_n(input, pixelCount, output);
    constexpr int32_t kPixelBits = 16;
    settings.BITSTORED = std::min(settings.BITSTORED, kPixelBits);
    const int32_t maxValue = MaxValueOfBits(settings.BITSTORED);
    CapSaturation(output, width, height, settings.SATURATION_VALUE);
    ConfiguredStageReport::Dump(L"%02d_OriginalImage.raw", output, width, height);

    const std::vector<uint16_t> mask = AllocZeroed<uint16_t>(width, height);
    if (settings.INTRAORAL_MASK != 0) FillMaskedPixels(output, mask.data(), width, height, maxValue);

    for (const int32_t position : ListStagePositions(iniPath, sectionName, settings.FunctionCount)) {
        const int32_t stageNumber = ReadStageNumber(state.IniPath, state.SectionName, position);
        RunStage(ConfiguredStages(), stageNumber,
                 {output, width, height, pixelCount, maxValue, log, position});
    }

    if (settings.INTRAORAL_MASK != 0) {
        const int32_t isInverted = settings.INVERSE_INTENSITY != 0 ? 1 : 0;
        RestoreMaskedPixels(output, mask.data(), width, height, isInverted);
    }
    ConfiguredStageReport::Dump(L"%02d_Result.raw", output, width, height);

    const uint32_t elapsedMs = TickCount() - startTick;
    if (state.SaveLog != 0) {
        WriteLogEnd(log, kConfiguredEndLine, LocalTime(), elapsedMs / 1000.0);
        log.Close();
    }
    return kSuccess;
}

}  // namespace vastrelline
