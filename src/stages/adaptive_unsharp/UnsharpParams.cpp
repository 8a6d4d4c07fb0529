// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/UnsharpParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

UnsharpParams ReadUnsharpParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    UnsharpParams params;
    keys.Read(L"GAUSSIAN_SIZE_CONTRAST", params.GAUSSIAN_SIZE_CONTRAST);
    keys.Read(L"ENAHCNED_RATIO_CONTRAST", params.ENAHCNED_RATIO_CONTRAST);
    keys.Read(L"NOISE_WIDTH_CONTRAST", params.NOISE_WIDTH_CONTRAST);
    keys.Read(L"MODE_CONTRAST", params.MODE_CONTRAST);
    keys.Read(L"PROTECTOUTLINE_CONTRAST", params.PROTECTOUTLINE_CONTRAST);
    keys.Read(L"ReduceTimeRatio_CONTRAST", params.ReduceTimeRatio_CONTRAST);
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
