#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

AdaptiveSmoothingParams ReadAdaptiveSmoothingParams(const std::wstring& iniPath, const std::wstring& section,
                                                    int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    AdaptiveSmoothingParams params;
    params.ADAPTIVESMOOTHING_MASK = profile.ReadProfileDouble(
        section, MakeNumberedKey(stageNumber, L"ADAPTIVESMOOTHING_MASK"), params.ADAPTIVESMOOTHING_MASK);
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    readInt(L"ADAPTIVESMOOTHING_ORDER", params.ADAPTIVESMOOTHING_ORDER);
    readInt(L"ADAPTIVESMOOTHING_Mode", params.ADAPTIVESMOOTHING_Mode);
    return params;
}

}  // namespace vastrelline
