// SPDX-License-Identifier: Apache-2.0
#include "stages/median/MedianParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

MedianParams ReadMedianParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    MedianParams params;
    keys.Read(L"MEDIAN_SIZE", params.MEDIAN_SIZE);
    keys.Read(L"MEDIAN_REPEAT", params.MEDIAN_REPEAT);
    keys.Read(L"MEDIAN_Mode", params.MEDIAN_Mode);
    return params;
}

}  // namespace vastrelline
