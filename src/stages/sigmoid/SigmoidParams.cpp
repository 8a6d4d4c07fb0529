#include "stages/sigmoid/SigmoidParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

SigmoidParams ReadSigmoidParams(const std::wstring& iniPath, const std::wstring& section,
                                int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    SigmoidParams params;
    params.POST_SIGMOID_RATIO = profile.ReadProfileDouble(
        section, MakeNumberedKey(stageNumber, L"POST_SIGMOID_RATIO"), params.POST_SIGMOID_RATIO);
    return params;
}

}  // namespace vastrelline
