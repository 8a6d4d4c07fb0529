#include "stages/sigmoid/SigmoidParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

SigmoidParams ReadSigmoidParams(const std::wstring& iniPath, const std::wstring& section,
                                int32_t stageNumber) {
    const NumberedKeys keys(iniPath, section, stageNumber);
    SigmoidParams params;
    keys.Read(L"POST_SIGMOID_RATIO", params.POST_SIGMOID_RATIO);
    return params;
}

}  // namespace vastrelline
