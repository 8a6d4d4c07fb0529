// SPDX-License-Identifier: Apache-2.0
#include "chains/StageTable.h"

#include "stages/adaptive_smoothing/AdaptiveSmoothingStage.h"
#include "stages/adaptive_unsharp/UnsharpStage.h"
#include "stages/clahe/ClaheStage.h"
#include "stages/gamma/GammaStage.h"
#include "stages/gaussian/GaussianStage.h"
#include "stages/hdr/HdrStage.h"
#include "stages/linear/LinearStage.h"
#include "stages/median/MedianStage.h"
#include "stages/pre_contrast/PreContrastStage.h"
#include "stages/pre_processing/PreProcessingStage.h"
#include "stages/pyramid/PyramidStage.h"
#include "stages/sigmoid/SigmoidStage.h"
#include "stages/stretch/StretchStage.h"

namespace vastrelline {

namespace {

using Call = StageCall;

// By number, but HDR last: the configured chain has all but the last.
constexpr StageEntry kStages[] = {
    {StageId::PreContrastProc,
     [](const Call& c) {
         PreContrastStage(c.Pixels(), c.Width(), c.Height(), c.PixelCount(), c.maxValue, c.log, c.position);
     }},
    {StageId::HistogramStretch,
     [](const Call& c) { RunStretchStage(c.frame, c.maxValue, c.log, c.position); }},
    {StageId::CLAHE,
     [](const Call& c) {
         RunClaheStage(c.Pixels(), c.Width(), c.Height(), c.PixelCount(), c.maxValue, c.log, c.position);
     }},
    {StageId::Unsharp,
     [](const Call& c) {
         AdaptiveUnsharpStage(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.log, c.position);
     }},
    {StageId::AdaptiveSmoothing,
     [](const Call& c) {
         RunAdaptiveSmoothingStage(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.log, c.position);
     }},
    {StageId::Pyramid, [](const Call& c) { PyramidStage(c.frame, c.maxValue, c.log, c.position); }},
    {StageId::Median,
     [](const Call& c) { RunMedianStage(c.Pixels(), c.Width(), c.Height(), c.log, c.position); }},
    {StageId::Gaussian,
     [](const Call& c) {
         RunGaussianStage(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.log, c.position);
     }},
    {StageId::SigmoidLUT, [](const Call& c) { RunSigmoidStage(c.frame, c.maxValue, c.log, c.position); }},
    {StageId::GammaLUT, [](const Call& c) { RunGammaStage(c.frame, c.maxValue, c.log, c.position); }},
    {StageId::LinearLUT, [](const Call& c) { RunLinearStage(c.frame, c.maxValue, c.log, c.position); }},
    {StageId::PreProcessing,
     [](const Call& c) {
         PreProcessingStage(c.Pixels(), c.maxValue, c.Width(), c.Height(), c.log, c.position);
     }},
    {StageId::HDR,
     [](const Call& c) {
         RunHdrStage(c.Pixels(), c.Width(), c.Height(), c.PixelCount(), c.maxValue, c.log, c.position);
     }},
};

static_assert(kStages[std::size(kStages) - 1].id == StageId::HDR);

}  // namespace

std::span<const StageEntry> ConfiguredStages() { return std::span(kStages).first(std::size(kStages) - 1); }

std::span<const StageEntry> AllStages() { return kStages; }

void RunStage(std::span<const StageEntry> stages, int32_t stageNumber, const StageCall& call) {
    for (const StageEntry& stage : stages) {
        if (static_cast<int32_t>(stage.id) == stageNumber) stage.run(call);
    }
}

}  // namespace vastrelline
