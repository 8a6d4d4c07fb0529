// SPDX-License-Identifier: Apache-2.0
#include "chains/FixedStageTable.h"

#include "stages/adaptive_smoothing/AdaptiveSmoothingStage.h"
#include "stages/adaptive_unsharp/UnsharpStage.h"
#include "stages/clahe/ClaheStage.h"
#include "stages/gamma/GammaStage.h"
#include "stages/gaussian/GaussianStage.h"
#include "stages/inversion/InversionStage.h"
#include "stages/median/MedianStage.h"
#include "stages/pre_contrast/PreContrastStage.h"
#include "stages/pyramid/PyramidStage.h"
#include "stages/sigmoid/SigmoidStage.h"
#include "stages/stretch/StretchStage.h"

namespace vastrelline {

namespace {

// One row of the stage table. What picks a row is a switch here and a number in the configured chain: they
// have no more in common than what they run.
struct FixedStageEntry {
    int32_t FixedSettings::*flag;  // not 0 runs the stage; null: it always runs
    bool isInCrChain;
    void (*run)(const FixedStageCall& call);
};

using Settings = FixedSettings;
using Call = FixedStageCall;

// In the order in which they run.
constexpr FixedStageEntry kFixedStages[] = {
    {&Settings::INVERSE_INTENSITY, true,
     [](const Call& c) { RunFixedInversion(c.frame, c.maxValue, c.dumpCounter, c.settings); }},
    {&Settings::PRE_MEDIAN, true,
     [](const Call& c) {
         RunPreMedian(c.Pixels(), c.Width(), c.Height(), c.dumpCounter, c.log, c.settings);
     }},
    {&Settings::PRE_GAUSSIAN, true,
     [](const Call& c) {
         RunPreGaussian(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.dumpCounter, c.log, c.settings);
     }},
    {&Settings::PRE_CONTRAST, true,
     [](const Call& c) {
         PreContrastStageFixed(c.Pixels(), c.Width(), c.Height(), c.PixelCount(), c.maxValue, c.dumpCounter,
                               c.log, c.settings);
     }},
    {&Settings::HISTOGRAM_STRETCH, true,
     [](const Call& c) {
         RunFixedStretch(c.frame, c.stretched, c.maxValue, c.dumpCounter, c.log, c.settings);
     }},
    {&Settings::PYRAMID_PROCESSING, false,
     [](const Call& c) { PyramidStageFixed(c.frame, c.maxValue, c.dumpCounter, c.log, c.settings); }},
    {&Settings::CONTRAST_ENHANCE, true,
     [](const Call& c) {
         AdaptiveUnsharpStageFixed(c.Pixels(), c.stretched, c.Width(), c.Height(), c.maxValue, c.dumpCounter,
                                   c.log, c.settings);
     }},
    {&Settings::CONTRAST_ENHANCE2, true,
     [](const Call& c) {
         RunClahe(c.Pixels(), c.Width(), c.Height(), c.PixelCount(), c.maxValue, c.dumpCounter, c.log,
                  c.settings);
     }},
    {&Settings::ADAPTIVE_SMOOTHING, true,
     [](const Call& c) {
         RunAdaptiveSmoothing(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.dumpCounter, c.log,
                              c.settings);
     }},
    {&Settings::POST_MEDIAN, true,
     [](const Call& c) {
         RunPostMedian(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.dumpCounter, c.log, c.settings);
     }},
    {&Settings::POST_GAUSSIAN, true,
     [](const Call& c) {
         RunPostGaussian(c.Pixels(), c.Width(), c.Height(), c.maxValue, c.dumpCounter, c.log, c.settings);
     }},
    // Whether it is the sigmoid or the linear curve is the stage's own switch.
    {nullptr, true,
     [](const Call& c) { RunFixedSigmoid(c.frame, c.maxValue, c.dumpCounter, c.log, c.settings); }},
    {&Settings::POST_GAMMA_LUT, true,
     [](const Call& c) { RunFixedGamma(c.frame, c.maxValue, c.dumpCounter, c.log, c.settings); }},
};

}  // namespace

void RunFixedStages(FixedChain chain, const FixedStageCall& call) {
    for (const FixedStageEntry& stage : kFixedStages) {
        if (chain == FixedChain::Cr && !stage.isInCrChain) continue;
        if (stage.flag == nullptr || call.settings.*stage.flag != 0) stage.run(call);
    }
}

}  // namespace vastrelline
