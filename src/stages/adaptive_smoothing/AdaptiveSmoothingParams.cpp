// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

AdaptiveSmoothingParams ReadAdaptiveSmoothingParams(const std::wstring& iniPath, const std::wstring& section,
                                                    int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    AdaptiveSmoothingParams params;
    keys.Read(L"ADAPTIVESMOOTHING_MASK", params.ADAPTIVESMOOTHING_MASK);
    keys.Read(L"ADAPTIVESMOOTHING_ORDER", params.ADAPTIVESMOOTHING_ORDER);
    keys.Read(L"ADAPTIVESMOOTHING_Mode", params.ADAPTIVESMOOTHING_Mode);
    return params;
}

}  // namespace vastrelline
