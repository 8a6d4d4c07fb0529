// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrastParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

PreContrastParams ReadPreContrastParams(const std::wstring& iniPath, const std::wstring& section,
                                        int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    PreContrastParams params;
    keys.Read(L"PRECONTRAST_MASK", params.PRECONTRAST_MASK);
    keys.Read(L"PRECONTRAST_RATIO", params.PRECONTRAST_RATIO);
    keys.Read(L"PRECONTRAST_RESCALE", params.PRECONTRAST_RESCALE);
    return params;
}

PreContrastParams PreContrastParamsOf(const FixedSettings& settings) {
    return {settings.PRECONTRAST_MASK, settings.PRECONTRAST_RATIO, settings.PRECONTRAST_RESCALE};
}

}  // namespace vastrelline
