#include "stages/pyramid/PyramidParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

PyramidParams ReadPyramidParams(const std::wstring& iniPath, const std::wstring& section,
                                int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    PyramidParams params;
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    const auto readDouble = [&](const wchar_t* key, double& value) {
        value = profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), value);
    };
    readInt(L"PYRAMID_LAYER", params.PYRAMID_LAYER);
    readDouble(L"GAUSSIAN_SIZE", params.GAUSSIAN_SIZE);
    readInt(L"APPLY_VARIABLE_RATIO", params.APPLY_VARIABLE_RATIO);
    readDouble(L"ENHANCED_RATIO", params.ENHANCED_RATIO);
    readDouble(L"NOISE_WIDTH", params.NOISE_WIDTH);
    readInt(L"APPLY_DIFF_ENHANCE", params.APPLY_DIFF_ENHANCE);
    readDouble(L"NOISE_CUTLIMIT", params.NOISE_CUTLIMIT);
    return params;
}

PyramidParams PyramidParamsOf(const FixedSettings& settings) {
    constexpr double kPerCent = 0.01;
    return {settings.PYRAMID_LAYER,  settings.GAUSSIAN_SIZE,          settings.APPLY_VARIABLE_RATIO,
            settings.ENHANCED_RATIO, settings.NOISE_WIDTH * kPerCent, settings.APPLY_DIFF_ENHANCE,
            settings.NOISE_CUTLIMIT};
}

}  // namespace vastrelline
