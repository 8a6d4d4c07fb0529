#include "stages/gamma/GammaParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

GammaParams ReadGammaParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    GammaParams params;
    params.POST_GAMMA_RATIO = profile.ReadProfileDouble(
        section, MakeNumberedKey(stageNumber, L"POST_GAMMA_RATIO"), params.POST_GAMMA_RATIO);
    return params;
}

}  // namespace vastrelline
