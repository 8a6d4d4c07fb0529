#include "stages/adaptive_unsharp/UnsharpParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

UnsharpParams ReadUnsharpParams(const std::wstring& iniPath, const std::wstring& section,
                                int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    UnsharpParams params;
    const auto readDouble = [&](const wchar_t* key, double& value) {
        value = profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), value);
    };
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    readDouble(L"GAUSSIAN_SIZE_CONTRAST", params.GAUSSIAN_SIZE_CONTRAST);
    readDouble(L"ENAHCNED_RATIO_CONTRAST", params.ENAHCNED_RATIO_CONTRAST);
    readInt(L"NOISE_WIDTH_CONTRAST", params.NOISE_WIDTH_CONTRAST);
    readInt(L"MODE_CONTRAST", params.MODE_CONTRAST);
    readInt(L"PROTECTOUTLINE_CONTRAST", params.PROTECTOUTLINE_CONTRAST);
    readInt(L"ReduceTimeRatio_CONTRAST", params.ReduceTimeRatio_CONTRAST);
    return params;
}

UnsharpParams UnsharpParamsOf(const FixedSettings& settings) {
    UnsharpParams params;
    params.GAUSSIAN_SIZE_CONTRAST = settings.GAUSSIAN_SIZE_CONTRAST;
    params.ENAHCNED_RATIO_CONTRAST = settings.ENAHCNED_RATIO_CONTRAST;
    params.NOISE_WIDTH_CONTRAST = settings.NOISE_WIDTH_CONTRAST;
    params.MODE_CONTRAST = settings.MODE_CONTRAST;
    return params;
}

}  // namespace vastrelline
