#include "stages/median/MedianParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

MedianParams ReadMedianParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    MedianParams params;
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    readInt(L"MEDIAN_SIZE", params.MEDIAN_SIZE);
    readInt(L"MEDIAN_REPEAT", params.MEDIAN_REPEAT);
    readInt(L"MEDIAN_Mode", params.MEDIAN_Mode);
    return params;
}

}  // namespace vastrelline
