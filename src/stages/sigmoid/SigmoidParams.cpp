// SPDX-License-Identifier: Apache-2.0
#include "stages/sigmoid/SigmoidParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

SigmoidParams ReadSigmoidParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    SigmoidParams params;
    keys.Read(L"POST_SIGMOID_RATIO", params.POST_SIGMOID_RATIO);
    return params;
}

}  // namespace vastrelline
