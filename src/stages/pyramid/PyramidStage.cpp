// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/PyramidStage.h"

#include <span>
#include <string>
#include <utility>

#include "config/ConfiguredState.h"
#include "report/CurveFile.h"
#include "report/RawDump.h"
#include "report/RunDumps.h"
#include "report/StageReport.h"
#include "stages/pyramid/Pyramid.h"
#include "stages/pyramid/PyramidParams.h"

namespace vastrelline {

namespace {

constexpr PyramidForm kConfiguredForm = {TailMode::Pass, true};
constexpr PyramidForm kFixedForm = {TailMode::Remove, false};

// Saves what the pyramid shows into the folder of dumps.
class DumpingObserver : public PyramidObserver {
public:
    explicit DumpingObserver(std::wstring writePath) : writePath_(std::move(writePath)) {}

    void SeeFrame(const std::wstring& name, const uint16_t* pixels, int32_t width, int32_t height) override {
        DumpRaw(writePath_ + name, pixels, width, height);
    }

    void SeeResponse(const std::wstring& name, int32_t first, std::span<const int32_t> responses) override {
        WriteCurveFile(writePath_ + name, first, first + static_cast<int32_t>(responses.size()) - 1,
                       [&](int32_t value) { return responses[static_cast<size_t>(value - first)]; });
    }

private:
    std::wstring writePath_;
};

void Enhance(TonedFrame& frame, int32_t maxValue, const PyramidParams& params, const PyramidForm& form,
             const RunDumps& dumps) {
    DumpingObserver observer(dumps.WritePath());
    PyramidProcess(frame, maxValue, BandCurve::Power, params, form, dumps.AreOn() ? &observer : nullptr);
}

}  // namespace

void PyramidStage(TonedFrame& frame, int32_t maxValue, LogFile& logFile, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const PyramidParams params = ReadPyramidParams(state.IniPath, state.SectionName, position);
    const StageReport report = StageReport::BeginConfigured(logFile);
    Enhance(frame, maxValue, params, kConfiguredForm, report);
    report.Dump(L"%02d_Pyramid.raw", frame);
    report.Log(L"#### %02d:%02d:%02d \t: pyramid ( %.03lf sec )\r\n",
               {LogLine(L"\t\t\t Layer          : %d\r\n", {params.PYRAMID_LAYER}),
                LogLine(L"\t\t\t Sigma          : %.2lf\r\n", {params.GAUSSIAN_SIZE}),
                LogLine(L"\t\t\t EnhancedRatio : %.2lf\r\n", {params.ENHANCED_RATIO}),
                LogLine(L"\t\t\t NoiseWidth    : %.2lf\r\n", {params.NOISE_WIDTH})});
}

void PyramidStageFixed(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                       const FixedSettings& settings) {
    const StageReport report = StageReport::BeginFixed(logFile, dumpCounter, settings);
    Enhance(frame, maxValue, PyramidParamsOf(settings), kFixedForm, report);
    report.Dump(L"%02d_Pyramid.raw", frame);
    report.Log(L"#### %02d:%02d:%02d \t: pyramid ( %d ms )\r\n",
               {LogLine(L"\t\t\t Layer          : %d\r\n", {settings.PYRAMID_LAYER}),
                LogLine(L"\t\t\t Sigma          : %.2lf\r\n", {settings.GAUSSIAN_SIZE}),
                LogLine(L"\t\t\t dEnhancedRatio : %.2lf\r\n", {settings.ENHANCED_RATIO}),
                LogLine(L"\t\t\t nNoiseWidth    : %d\r\n", {settings.NOISE_WIDTH})});
}

}  // namespace vastrelline
