#include "entry/StageTable.h"

#include "noise/GaussianStage.h"
#include "tone/GammaStage.h"
#include "tone/LinearStage.h"

namespace vastrelline {

namespace {

constexpr StageEntry kConfiguredStages[] = {
    {StageId::Gaussian,
     [](const StageCall& c) { RunGaussianStage(c.frame, c.width, c.height, c.maxValue, c.log, c.position); }},
    {StageId::GammaLUT,
     [](const StageCall& c) { RunGammaStage(c.frame, c.width, c.height, c.maxValue, c.log, c.position); }},
    {StageId::LinearLUT,
     [](const StageCall& c) { RunLinearStage(c.frame, c.width, c.height, c.maxValue, c.log, c.position); }},
};

}  // namespace

std::span<const StageEntry> ConfiguredStages() { return kConfiguredStages; }

void RunStage(std::span<const StageEntry> stages, int32_t stageNumber, const StageCall& call) {
    for (const StageEntry& stage : stages) {
        if (static_cast<int32_t>(stage.id) == stageNumber) stage.run(call);
    }
}

}  // namespace vastrelline
