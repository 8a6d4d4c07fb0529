// SPDX-License-Identifier: Apache-2.0
#include "stages/gamma/GammaParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

GammaParams ReadGammaParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    GammaParams params;
    keys.Read(L"POST_GAMMA_RATIO", params.POST_GAMMA_RATIO);
    return params;
}

}  // namespace vastrelline
