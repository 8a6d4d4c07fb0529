#include "stages/gaussian/GaussianParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

GaussianParams ReadGaussianParams(const std::wstring& iniPath, const std::wstring& section,
                                  int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    GaussianParams params;
    params.GAUSSIAN_SIZE = profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, L"GAUSSIAN_SIZE"),
                                                     params.GAUSSIAN_SIZE);
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    readInt(L"GAUSSIAN_REPEAT", params.GAUSSIAN_REPEAT);
    readInt(L"GAUSSIAN_ReduceTimeRatio", params.GAUSSIAN_ReduceTimeRatio);
    readInt(L"GAUSSIAN_ProtectOutline", params.GAUSSIAN_ProtectOutline);
    return params;
}

}  // namespace vastrelline
