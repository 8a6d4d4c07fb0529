#include "config/FixedSettings.h"

#include "config/CRegistryIO.h"

namespace vastrelline {

void ReadFixedSettings(const std::wstring& iniPath, const std::wstring& section, FixedSettings& record) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    record.VERSION = profile.ReadProfileString(section, L"VERSION", L"");
    record.SAVE_IMAGE = profile.ReadProfileInt(section, L"SAVE_IMAGE", 0);
    record.SAVE_LOG = profile.ReadProfileInt(section, L"SAVE_LOG", 0);
    record.WRITE_PATH = profile.ReadProfileString(section, L"WRITE_PATH", L"");
    record.BITALLOCATED = profile.ReadProfileInt(section, L"BITALLOCATED", 16);
    record.BITSTORED = profile.ReadProfileInt(section, L"BITSTORED", 12);
    record.LITTLEENDIAN = profile.ReadProfileInt(section, L"LITTLEENDIAN", 1);
    record.SATURATION_VALUE = profile.ReadProfileInt(section, L"SATURATION_VALUE", 4095);
    record.OUTPUTRANGE = profile.ReadProfileInt(section, L"OUTPUTRANGE", 4095);
    record.INTRAORAL_MASK = profile.ReadProfileInt(section, L"INTRAORAL_MASK", 1);
    record.HISTOGRAM_STRETCH = profile.ReadProfileInt(section, L"HISTOGRAM_STRETCH", 0);
    record.PRE_MEDIAN = profile.ReadProfileInt(section, L"PRE_MEDIAN", 0);
    record.PRE_GAUSSIAN = profile.ReadProfileInt(section, L"PRE_GAUSSIAN", 0);
    record.POST_GAUSSIAN = profile.ReadProfileInt(section, L"POST_GAUSSIAN", 0);
    record.POST_SIGMOID_LUT = profile.ReadProfileInt(section, L"POST_SIGMOID_LUT", 0);
    record.POST_GAMMA_LUT = profile.ReadProfileInt(section, L"POST_GAMMA_LUT", 0);
    record.POST_MEDIAN = profile.ReadProfileInt(section, L"POST_MEDIAN", 0);
    record.CONTRAST_ENHANCE2 = profile.ReadProfileInt(section, L"CONTRAST_ENHANCE2", 0);
    record.CONTRAST_ENHANCE = profile.ReadProfileInt(section, L"CONTRAST_ENHANCE", 0);
    record.PYRAMID_PROCESSING = profile.ReadProfileInt(section, L"PYRAMID_PROCESSING", 0);
    record.PRE_CONTRAST = profile.ReadProfileInt(section, L"PRE_CONTRAST", 0);
    record.ADAPTIVE_SMOOTHING = profile.ReadProfileInt(section, L"ADAPTIVE_SMOOTHING", 0);
    record.STRETCH_SEPARATION_CNT = profile.ReadProfileInt(section, L"STRETCH_SEPARATION_CNT", 0);
    record.RESTRETCH_OPTION = profile.ReadProfileInt(section, L"RESTRETCH_OPTION", 2);
    record.LEFT_LEN_LIMIT = profile.ReadProfileInt(section, L"LEFT_LEN_LIMIT", 1000);
    record.RIGHT_LEN_LIMIT = profile.ReadProfileInt(section, L"RIGHT_LEN_LIMIT", 500);
    record.STRETCH_LEFT_WEIGHT = profile.ReadProfileDouble(section, L"STRETCH_LEFT_WEIGHT", 4.0);
    record.STRETCH_RIGHT_WEIGHT = profile.ReadProfileDouble(section, L"STRETCH_RIGHT_WEIGHT", 4.0);
    record.STRETCH_LIMITBIN = profile.ReadProfileInt(section, L"STRETCH_LIMITBIN", 50);
    record.INVERSE_INTENSITY = profile.ReadProfileInt(section, L"INVERSE_INTENSITY", 1);
    record.INVERSE_LOGRATIO = profile.ReadProfileDouble(section, L"INVERSE_LOGRATIO", 0.2);
    record.PRE_MEDIAN_SIZE = profile.ReadProfileInt(section, L"PRE_MEDIAN_SIZE", 3);
    record.PRE_GAUSSIAN_SIZE = profile.ReadProfileDouble(section, L"PRE_GAUSSIAN_SIZE", 1.0);
    record.GAUSSIAN_SIZE_CONTRAST = profile.ReadProfileDouble(section, L"GAUSSIAN_SIZE_CONTRAST", 3.0);
    record.ENAHCNED_RATIO_CONTRAST = profile.ReadProfileDouble(section, L"ENAHCNED_RATIO_CONTRAST", 2.0);
    record.NOISE_WIDTH_CONTRAST = profile.ReadProfileInt(section, L"NOISE_WIDTH_CONTRAST", 0);
    record.MODE_CONTRAST = profile.ReadProfileInt(section, L"MODE_CONTRAST", 0);
    record.BLOCK_SIZE = profile.ReadProfileInt(section, L"BLOCK_SIZE", 64);
    record.HISTO_BINS = profile.ReadProfileInt(section, L"HISTO_BINS", 256);
    record.MAX_SLOPE = profile.ReadProfileDouble(section, L"MAX_SLOPE", 1.5);
    record.CORRECTVAL = profile.ReadProfileInt(section, L"CORRECTVAL", 1);
    record.PYRAMID_LAYER = profile.ReadProfileInt(section, L"PYRAMID_LAYER", 3);
    record.GAUSSIAN_SIZE = profile.ReadProfileDouble(section, L"GAUSSIAN_SIZE", 1.0);
    record.APPLY_VARIABLE_RATIO = profile.ReadProfileInt(section, L"APPLY_VARIABLE_RATIO", 0);
    record.ENHANCED_RATIO = profile.ReadProfileDouble(section, L"ENHANCED_RATIO", 1.5);
    record.NOISE_WIDTH = profile.ReadProfileInt(section, L"NOISE_WIDTH", 100);
    record.APPLY_DIFF_ENHANCE = profile.ReadProfileInt(section, L"APPLY_DIFF_ENHANCE", 1);
    record.NOISE_CUTLIMIT = profile.ReadProfileDouble(section, L"NOISE_CUTLIMIT", 0.01);
    record.POST_GAUSSIAN_SIZE = profile.ReadProfileDouble(section, L"POST_GAUSSIAN_SIZE", 1.0);
    record.POST_SIGMOID_RATIO = profile.ReadProfileDouble(section, L"POST_SIGMOID_RATIO", 0.0);
    record.POST_GAMMA_RATIO = profile.ReadProfileDouble(section, L"POST_GAMMA_RATIO", 0.5);
    record.POST_MEDIAN_SIZE = profile.ReadProfileInt(section, L"POST_MEDIAN_SIZE", 3);
    record.POST_MEDIAN_REPEAT = profile.ReadProfileInt(section, L"POST_MEDIAN_REPEAT", 3);
    record.PRECONTRAST_MASK = profile.ReadProfileDouble(section, L"PRECONTRAST_MASK", 15.0);
    record.PRECONTRAST_RATIO = profile.ReadProfileDouble(section, L"PRECONTRAST_RATIO", 1.25);
    record.PRECONTRAST_RESCALE = profile.ReadProfileDouble(section, L"PRECONTRAST_RESCALE", 2.0);
    record.ADAPTIVESMOOTHING_MASK = profile.ReadProfileInt(section, L"ADAPTIVESMOOTHING_MASK", 15);
    record.ADAPTIVESMOOTHING_ORDER = profile.ReadProfileInt(section, L"ADAPTIVESMOOTHING_ORDER", 4);
    record.SAVE_BACKUP = profile.ReadProfileInt(section, L"SAVE_BACKUP", 0);
    record.SAVE_BACKUPPATH = profile.ReadProfileString(section, L"SAVE_BACKUPPATH", L"");
}

}  // namespace vastrelline
