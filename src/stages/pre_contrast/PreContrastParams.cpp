#include "stages/pre_contrast/PreContrastParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

PreContrastParams ReadPreContrastParams(const std::wstring& iniPath, const std::wstring& section,
                                        int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    const auto read = [&](const wchar_t* key, double& value) {
        value = profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), value);
    };
    PreContrastParams params;
    read(L"PRECONTRAST_MASK", params.PRECONTRAST_MASK);
    read(L"PRECONTRAST_RATIO", params.PRECONTRAST_RATIO);
    read(L"PRECONTRAST_RESCALE", params.PRECONTRAST_RESCALE);
    return params;
}

PreContrastParams PreContrastParamsOf(const FixedSettings& settings) {
    return {settings.PRECONTRAST_MASK, settings.PRECONTRAST_RATIO, settings.PRECONTRAST_RESCALE};
}

}  // namespace vastrelline
