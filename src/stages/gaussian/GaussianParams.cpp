// SPDX-License-Identifier: Apache-2.0
#include "stages/gaussian/GaussianParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

GaussianParams ReadGaussianParams(const std::wstring& iniPath, const std::wstring& section,
                                  int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    GaussianParams params;
    keys.Read(L"GAUSSIAN_SIZE", params.GAUSSIAN_SIZE);
    keys.Read(L"GAUSSIAN_REPEAT", params.GAUSSIAN_REPEAT);
    keys.Read(L"GAUSSIAN_ReduceTimeRatio", params.GAUSSIAN_ReduceTimeRatio);
    keys.Read(L"GAUSSIAN_ProtectOutline", params.GAUSSIAN_ProtectOutline);
    return params;
}

}  // namespace vastrelline
