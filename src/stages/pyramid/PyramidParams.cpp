// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/PyramidParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

PyramidParams ReadPyramidParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    PyramidParams params;
    keys.Read(L"PYRAMID_LAYER", params.PYRAMID_LAYER);
    keys.Read(L"GAUSSIAN_SIZE", params.GAUSSIAN_SIZE);
    keys.Read(L"APPLY_VARIABLE_RATIO", params.APPLY_VARIABLE_RATIO);
    keys.Read(L"ENHANCED_RATIO", params.ENHANCED_RATIO);
    keys.Read(L"NOISE_WIDTH", params.NOISE_WIDTH);
    keys.Read(L"APPLY_DIFF_ENHANCE", params.APPLY_DIFF_ENHANCE);
    keys.Read(L"NOISE_CUTLIMIT", params.NOISE_CUTLIMIT);
    return params;
}

PyramidParams PyramidParamsOf(const FixedSettings& settings) {
    constexpr double kPerCent = 0.01;
    return {settings.PYRAMID_LAYER,  settings.GAUSSIAN_SIZE,          settings.APPLY_VARIABLE_RATIO,
            settings.ENHANCED_RATIO, settings.NOISE_WIDTH * kPerCent, settings.APPLY_DIFF_ENHANCE,
            settings.NOISE_CUTLIMIT};
}

}  // namespace vastrelline
