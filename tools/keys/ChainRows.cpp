// SPDX-License-Identifier: Apache-2.0

// Written by scripts/make-docs.py from docs/keys.toml: edit there.
// clang-format off

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "keys/KeyRows.h"
#include "keys/KeyTable.h"

namespace vastrelline {

namespace {

constexpr std::string_view kInverseIntensityStepKeys[] = {"INVERSE_LOGRATIO"};
constexpr std::string_view kPreMedianStepKeys[] = {"PRE_MEDIAN_SIZE"};
constexpr std::string_view kPreGaussianStepKeys[] = {"PRE_GAUSSIAN_SIZE"};
constexpr std::string_view kPreContrastStepKeys[] = {
    "PRECONTRAST_MASK",
    "PRECONTRAST_RATIO",
    "PRECONTRAST_RESCALE",
};
constexpr std::string_view kHistogramStretchStepKeys[] = {
    "STRETCH_SEPARATION_CNT",
    "RESTRETCH_OPTION",
    "LEFT_LEN_LIMIT",
    "RIGHT_LEN_LIMIT",
    "STRETCH_LEFT_WEIGHT",
    "STRETCH_RIGHT_WEIGHT",
    "STRETCH_LIMITBIN",
};
constexpr std::string_view kPyramidProcessingStepKeys[] = {
    "PYRAMID_LAYER",
    "GAUSSIAN_SIZE",
    "APPLY_VARIABLE_RATIO",
    "ENHANCED_RATIO",
    "NOISE_WIDTH",
    "APPLY_DIFF_ENHANCE",
    "NOISE_CUTLIMIT",
};
constexpr std::string_view kContrastEnhanceStepKeys[] = {
    "GAUSSIAN_SIZE_CONTRAST",
    "ENAHCNED_RATIO_CONTRAST",
    "NOISE_WIDTH_CONTRAST",
    "MODE_CONTRAST",
};
constexpr std::string_view kContrastEnhance2StepKeys[] = {
    "BLOCK_SIZE",
    "HISTO_BINS",
    "MAX_SLOPE",
    "CORRECTVAL",
};
constexpr std::string_view kAdaptiveSmoothingStepKeys[] = {
    "ADAPTIVESMOOTHING_MASK",
    "ADAPTIVESMOOTHING_ORDER",
};
constexpr std::string_view kPostMedianStepKeys[] = {"POST_MEDIAN_SIZE", "POST_MEDIAN_REPEAT"};
constexpr std::string_view kPostGaussianStepKeys[] = {"POST_GAUSSIAN_SIZE"};
constexpr std::string_view kPostSigmoidLutStepKeys[] = {"POST_SIGMOID_RATIO"};
constexpr std::string_view kPostGammaLutStepKeys[] = {"POST_GAMMA_RATIO"};
constexpr FixedStep kSteps[] = {
    {"INVERSE_INTENSITY", 0, kInverseIntensityStepKeys, true},
    {"PRE_MEDIAN", 7, kPreMedianStepKeys, true},
    {"PRE_GAUSSIAN", 8, kPreGaussianStepKeys, true},
    {"PRE_CONTRAST", 1, kPreContrastStepKeys, true},
    {"HISTOGRAM_STRETCH", 2, kHistogramStretchStepKeys, true},
    {"PYRAMID_PROCESSING", 6, kPyramidProcessingStepKeys, false},
    {"CONTRAST_ENHANCE", 4, kContrastEnhanceStepKeys, true},
    {"CONTRAST_ENHANCE2", 3, kContrastEnhance2StepKeys, true},
    {"ADAPTIVE_SMOOTHING", 5, kAdaptiveSmoothingStepKeys, true},
    {"POST_MEDIAN", 7, kPostMedianStepKeys, true},
    {"POST_GAUSSIAN", 8, kPostGaussianStepKeys, true},
    {"POST_SIGMOID_LUT", 9, kPostSigmoidLutStepKeys, true},
    {"POST_GAMMA_LUT", 10, kPostGammaLutStepKeys, true},
};
constexpr int32_t kLowSequence[] = {8, 12, 2, 3, 3, 11, 10};

}  // namespace

std::span<const FixedStep> FixedStepRows() { return kSteps; }

std::span<const int32_t> LowSequenceRows() { return kLowSequence; }

}  // namespace vastrelline
