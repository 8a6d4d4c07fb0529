#include "entry/ConfiguredChain.h"

#include <algorithm>
#include <vector>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "config/SensorSettings.h"
#include "config/StageId.h"
#include "diagnostics/BackupSet.h"
#include "diagnostics/LogFile.h"
#include "diagnostics/StageReport.h"
#include "entry/StageTable.h"
#include "image/AllocZeroed.h"
#include "image/Truncate.h"
#include "platform/Clock.h"
#include "prepare/CornerMask.h"
#include "prepare/InversionStage.h"
#include "prepare/MaskedPixels.h"
#include "prepare/SaturationCap.h"
#include "prepare/TargetRange.h"
#include "tone/LinearCurve.h"

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

// Brings a frame of more significant bits than a pixel holds into 16 bits. Returns the frame's largest pixel
// value from then on.
int32_t RescaleToPixelBits(uint16_t* output, int32_t width, int32_t height, CommonSettings& settings) {
    constexpr int32_t kPixelBits = 16;
    constexpr int32_t kTopPixel = 0xFFFF;
    const int32_t maxValue = MaxValueOfBits(settings.BITSTORED);
    if (settings.BITSTORED <= kPixelBits) return maxValue;
    ApplyLinearCurve(output, width, height, maxValue, kTopPixel, 0, 0, 0, L"", 0);
    settings.BITSTORED = kPixelBits;
    return kTopPixel;
}

// The sensor's rounded corners: 255 where they hide a pixel of the frame.
std::vector<uint16_t> BuildCornerMask(const uint16_t* output, int32_t width, int32_t height,
                                      const std::wstring& iniPath, const SensorGeometry* geometry) {
    std::vector<uint16_t> mask = AllocZeroed<uint16_t>(width, height);
    if (geometry != nullptr) {
        BuildMaskFromGeometry(output, mask.data(), width, height, *geometry);
    } else {
        BuildMaskFromProfile(output, mask.data(), width, height, iniPath);
    }
    return mask;
}

}  // namespace

ReturnCode RunConfiguredChain(const uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                              const std::wstring& iniPath, const std::wstring& sectionName,
                              const SensorGeometry* geometry) {
    const uint32_t startTick = TickCount();
    if (const ReturnCode code = TestDriverArguments(iniPath, input, output); code != kSuccess) return code;
    if (sectionName.empty()) return kNoSection;
    if (width <= 0 || height <= 0) return kSuccess;
    const int32_t pixelCount = CountPixels(width, height);

    SyncSensorSettings(iniPath, L"", 0);
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
    const int32_t maxValue = RescaleToPixelBits(output, width, height, settings);
    CapSaturation(output, width, height, settings.SATURATION_VALUE);
    ConfiguredStageReport::Dump(L"%02d_OriginalImage.raw", output, width, height);

    std::vector<uint16_t> mask;
    if (settings.INTRAORAL_MASK != 0) {
        mask = BuildCornerMask(output, width, height, iniPath, geometry);
        FillMaskedPixels(output, mask.data(), width, height, maxValue);
    }

    TargetRangeParams target;
    ReadTargetRange(iniPath, kSensorSection, target);
    ApplyTargetRange(output, width, height, target.TargetRange, target.MinimumValue, target.MaxCut,
                     target.MinCut);
    if (settings.INVERSE_INTENSITY != 0) {
        RunInversion(output, width, height, pixelCount, maxValue, log, settings);
    }

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
    if (settings.SAVE_BACKUP != 0) {
        const BackupWindow window{settings.OUTPUTRANGE / 2, WrappingAdd(settings.OUTPUTRANGE, 1)};
        WriteBackupSet(settings.SAVE_BACKUPPATH, sectionName, input, output, width, height, window);
    }
    return kSuccess;
}

}  // namespace vastrelline
