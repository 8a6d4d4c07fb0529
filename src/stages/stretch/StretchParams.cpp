// SPDX-License-Identifier: Apache-2.0
#include "stages/stretch/StretchParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

StretchParams ReadStretchParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    StretchParams params;
    keys.Read(L"STRETCH_SEPARATION_CNT", params.STRETCH_SEPARATION_CNT);
    keys.Read(L"RESTRETCH_OPTION", params.RESTRETCH_OPTION);
    keys.Read(L"LEFT_LEN_LIMIT", params.LEFT_LEN_LIMIT);
    keys.Read(L"RIGHT_LEN_LIMIT", params.RIGHT_LEN_LIMIT);
    keys.Read(L"STRETCH_LEFT_WEIGHT", params.STRETCH_LEFT_WEIGHT);
    keys.Read(L"STRETCH_RIGHT_WEIGHT", params.STRETCH_RIGHT_WEIGHT);
    keys.Read(L"STRETCH_LIMITBIN", params.STRETCH_LIMITBIN);
    return params;
}

StretchParams StretchParamsOf(const FixedSettings& settings) {
    return {settings.STRETCH_SEPARATION_CNT, settings.RESTRETCH_OPTION,    settings.LEFT_LEN_LIMIT,
            settings.RIGHT_LEN_LIMIT,        settings.STRETCH_LEFT_WEIGHT, settings.STRETCH_RIGHT_WEIGHT,
            settings.STRETCH_LIMITBIN};
}

}  // namespace vastrelline
