#include "stages/gamma/GammaParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

GammaParams ReadGammaParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const NumberedKeys keys(iniPath, section, stageNumber);
    GammaParams params;
    keys.Read(L"POST_GAMMA_RATIO", params.POST_GAMMA_RATIO);
    return params;
}

}  // namespace vastrelline
