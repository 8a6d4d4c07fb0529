// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// All settings of the fixed chain, one record per run. The fields are named as their keys, which stand
// without a position in front, and hold their defaults when made.
struct FixedSettings {
    // The run.
    std::wstring VERSION;
    int32_t SAVE_IMAGE = 0;
    int32_t SAVE_LOG = 0;
    std::wstring WRITE_PATH;
    int32_t BITALLOCATED = 16;
    int32_t BITSTORED = 12;
    int32_t LITTLEENDIAN = 1;
    int32_t SATURATION_VALUE = 4095;
    int32_t OUTPUTRANGE = 4095;
    int32_t INTRAORAL_MASK = 1;

    // Switches of the stages: not 0 runs the stage.
    int32_t HISTOGRAM_STRETCH = 0;
    int32_t PRE_MEDIAN = 0;
    int32_t PRE_GAUSSIAN = 0;
    int32_t POST_GAUSSIAN = 0;
    int32_t POST_SIGMOID_LUT = 0;
    int32_t POST_GAMMA_LUT = 0;
    int32_t POST_MEDIAN = 0;
    int32_t CONTRAST_ENHANCE2 = 0;
    int32_t CONTRAST_ENHANCE = 0;
    int32_t PYRAMID_PROCESSING = 0;
    int32_t PRE_CONTRAST = 0;
    int32_t ADAPTIVE_SMOOTHING = 0;

    // Parameters of the stages.
    int32_t STRETCH_SEPARATION_CNT = 0;
    int32_t RESTRETCH_OPTION = 2;
    int32_t LEFT_LEN_LIMIT = 1000;
    int32_t RIGHT_LEN_LIMIT = 500;
    double STRETCH_LEFT_WEIGHT = 4.0;
    double STRETCH_RIGHT_WEIGHT = 4.0;
    int32_t STRETCH_LIMITBIN = 50;
    int32_t INVERSE_INTENSITY = 1;
    double INVERSE_LOGRATIO = 0.2;
    int32_t PRE_MEDIAN_SIZE = 3;
    double PRE_GAUSSIAN_SIZE = 1.0;
    double GAUSSIAN_SIZE_CONTRAST = 3.0;
    double ENAHCNED_RATIO_CONTRAST = 2.0;
    int32_t NOISE_WIDTH_CONTRAST = 0;
    int32_t MODE_CONTRAST = 0;
    int32_t BLOCK_SIZE = 64;
    int32_t HISTO_BINS = 256;
    double MAX_SLOPE = 1.5;
    int32_t CORRECTVAL = 1;
    int32_t PYRAMID_LAYER = 3;
    double GAUSSIAN_SIZE = 1.0;
    int32_t APPLY_VARIABLE_RATIO = 0;
    double ENHANCED_RATIO = 1.5;
    int32_t NOISE_WIDTH = 100;
    int32_t APPLY_DIFF_ENHANCE = 1;
    double NOISE_CUTLIMIT = 0.01;
    double POST_GAUSSIAN_SIZE = 1.0;
    double POST_SIGMOID_RATIO = 0.0;
    double POST_GAMMA_RATIO = 0.5;
    int32_t POST_MEDIAN_SIZE = 3;
    int32_t POST_MEDIAN_REPEAT = 3;
    double PRECONTRAST_MASK = 15.0;
    double PRECONTRAST_RATIO = 1.25;
    double PRECONTRAST_RESCALE = 2.0;
    int32_t ADAPTIVESMOOTHING_MASK = 15;
    int32_t ADAPTIVESMOOTHING_ORDER = 4;
    int32_t SAVE_BACKUP = 0;
    std::wstring SAVE_BACKUPPATH;
};

// Reads the record from a section of a profile. A missing section gives the defaults.
void ReadFixedSettings(const std::wstring& iniPath, const std::wstring& section, FixedSettings& record);

}  // namespace vastrelline
