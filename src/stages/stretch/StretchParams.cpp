#include "stages/stretch/StretchParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

StretchParams ReadStretchParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(position, key), value);
    };
    const auto readDouble = [&](const wchar_t* key, double& value) {
        value = profile.ReadProfileDouble(section, MakeNumberedKey(position, key), value);
    };
    StretchParams params;
    readInt(L"STRETCH_SEPARATION_CNT", params.STRETCH_SEPARATION_CNT);
    readInt(L"RESTRETCH_OPTION", params.RESTRETCH_OPTION);
    readInt(L"LEFT_LEN_LIMIT", params.LEFT_LEN_LIMIT);
    readInt(L"RIGHT_LEN_LIMIT", params.RIGHT_LEN_LIMIT);
    readDouble(L"STRETCH_LEFT_WEIGHT", params.STRETCH_LEFT_WEIGHT);
    readDouble(L"STRETCH_RIGHT_WEIGHT", params.STRETCH_RIGHT_WEIGHT);
    readInt(L"STRETCH_LIMITBIN", params.STRETCH_LIMITBIN);
    return params;
}

StretchParams StretchParamsOf(const FixedSettings& settings) {
    return {settings.STRETCH_SEPARATION_CNT, settings.RESTRETCH_OPTION,    settings.LEFT_LEN_LIMIT,
            settings.RIGHT_LEN_LIMIT,        settings.STRETCH_LEFT_WEIGHT, settings.STRETCH_RIGHT_WEIGHT,
            settings.STRETCH_LIMITBIN};
}

}  // namespace vastrelline
