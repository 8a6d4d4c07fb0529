// SPDX-License-Identifier: Apache-2.0
#include "config/FixedSettings.h"

#include "config/SectionKeys.h"

namespace vastrelline {

void ReadFixedSettings(const std::wstring& iniPath, const std::wstring& section, FixedSettings& record) {
    // A used record goes back to the defaults.
    record = {};
    const SectionKeys keys(iniPath, section);
    keys.Read(L"VERSION", record.VERSION);
    keys.Read(L"SAVE_IMAGE", record.SAVE_IMAGE);
    keys.Read(L"SAVE_LOG", record.SAVE_LOG);
    keys.Read(L"WRITE_PATH", record.WRITE_PATH);
    keys.Read(L"BITALLOCATED", record.BITALLOCATED);
    keys.Read(L"BITSTORED", record.BITSTORED);
    keys.Read(L"LITTLEENDIAN", record.LITTLEENDIAN);
    keys.Read(L"SATURATION_VALUE", record.SATURATION_VALUE);
    keys.Read(L"OUTPUTRANGE", record.OUTPUTRANGE);
    keys.Read(L"INTRAORAL_MASK", record.INTRAORAL_MASK);
    keys.Read(L"HISTOGRAM_STRETCH", record.HISTOGRAM_STRETCH);
    keys.Read(L"PRE_MEDIAN", record.PRE_MEDIAN);
    keys.Read(L"PRE_GAUSSIAN", record.PRE_GAUSSIAN);
    keys.Read(L"POST_GAUSSIAN", record.POST_GAUSSIAN);
    keys.Read(L"POST_SIGMOID_LUT", record.POST_SIGMOID_LUT);
    keys.Read(L"POST_GAMMA_LUT", record.POST_GAMMA_LUT);
    keys.Read(L"POST_MEDIAN", record.POST_MEDIAN);
    keys.Read(L"CONTRAST_ENHANCE2", record.CONTRAST_ENHANCE2);
    keys.Read(L"CONTRAST_ENHANCE", record.CONTRAST_ENHANCE);
    keys.Read(L"PYRAMID_PROCESSING", record.PYRAMID_PROCESSING);
    keys.Read(L"PRE_CONTRAST", record.PRE_CONTRAST);
    keys.Read(L"ADAPTIVE_SMOOTHING", record.ADAPTIVE_SMOOTHING);
    keys.Read(L"STRETCH_SEPARATION_CNT", record.STRETCH_SEPARATION_CNT);
    keys.Read(L"RESTRETCH_OPTION", record.RESTRETCH_OPTION);
    keys.Read(L"LEFT_LEN_LIMIT", record.LEFT_LEN_LIMIT);
    keys.Read(L"RIGHT_LEN_LIMIT", record.RIGHT_LEN_LIMIT);
    keys.Read(L"STRETCH_LEFT_WEIGHT", record.STRETCH_LEFT_WEIGHT);
    keys.Read(L"STRETCH_RIGHT_WEIGHT", record.STRETCH_RIGHT_WEIGHT);
    keys.Read(L"STRETCH_LIMITBIN", record.STRETCH_LIMITBIN);
    keys.Read(L"INVERSE_INTENSITY", record.INVERSE_INTENSITY);
    keys.Read(L"INVERSE_LOGRATIO", record.INVERSE_LOGRATIO);
    keys.Read(L"PRE_MEDIAN_SIZE", record.PRE_MEDIAN_SIZE);
    keys.Read(L"PRE_GAUSSIAN_SIZE", record.PRE_GAUSSIAN_SIZE);
    keys.Read(L"GAUSSIAN_SIZE_CONTRAST", record.GAUSSIAN_SIZE_CONTRAST);
    keys.Read(L"ENAHCNED_RATIO_CONTRAST", record.ENAHCNED_RATIO_CONTRAST);
    keys.Read(L"NOISE_WIDTH_CONTRAST", record.NOISE_WIDTH_CONTRAST);
    keys.Read(L"MODE_CONTRAST", record.MODE_CONTRAST);
    keys.Read(L"BLOCK_SIZE", record.BLOCK_SIZE);
    keys.Read(L"HISTO_BINS", record.HISTO_BINS);
    keys.Read(L"MAX_SLOPE", record.MAX_SLOPE);
    keys.Read(L"CORRECTVAL", record.CORRECTVAL);
    keys.Read(L"PYRAMID_LAYER", record.PYRAMID_LAYER);
    keys.Read(L"GAUSSIAN_SIZE", record.GAUSSIAN_SIZE);
    keys.Read(L"APPLY_VARIABLE_RATIO", record.APPLY_VARIABLE_RATIO);
    keys.Read(L"ENHANCED_RATIO", record.ENHANCED_RATIO);
    keys.Read(L"NOISE_WIDTH", record.NOISE_WIDTH);
    keys.Read(L"APPLY_DIFF_ENHANCE", record.APPLY_DIFF_ENHANCE);
    keys.Read(L"NOISE_CUTLIMIT", record.NOISE_CUTLIMIT);
    keys.Read(L"POST_GAUSSIAN_SIZE", record.POST_GAUSSIAN_SIZE);
    keys.Read(L"POST_SIGMOID_RATIO", record.POST_SIGMOID_RATIO);
    keys.Read(L"POST_GAMMA_RATIO", record.POST_GAMMA_RATIO);
    keys.Read(L"POST_MEDIAN_SIZE", record.POST_MEDIAN_SIZE);
    keys.Read(L"POST_MEDIAN_REPEAT", record.POST_MEDIAN_REPEAT);
    keys.Read(L"PRECONTRAST_MASK", record.PRECONTRAST_MASK);
    keys.Read(L"PRECONTRAST_RATIO", record.PRECONTRAST_RATIO);
    keys.Read(L"PRECONTRAST_RESCALE", record.PRECONTRAST_RESCALE);
    keys.Read(L"ADAPTIVESMOOTHING_MASK", record.ADAPTIVESMOOTHING_MASK);
    keys.Read(L"ADAPTIVESMOOTHING_ORDER", record.ADAPTIVESMOOTHING_ORDER);
    keys.Read(L"SAVE_BACKUP", record.SAVE_BACKUP);
    keys.Read(L"SAVE_BACKUPPATH", record.SAVE_BACKUPPATH);
}

}  // namespace vastrelline
