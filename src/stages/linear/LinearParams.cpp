// SPDX-License-Identifier: Apache-2.0
#include "stages/linear/LinearParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

LinearParams ReadLinearParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    LinearParams params;
    keys.ReadTruncated(L"POST_LINEAR_MODE", params.POST_LINEAR_MODE);
    keys.ReadTruncated(L"POST_LINEAR_LIMITBIN", params.POST_LINEAR_LIMITBIN);
    keys.ReadTruncated(L"POST_LINEAR_BRIGHTOPT", params.POST_LINEAR_BRIGHTOPT);
    return params;
}

}  // namespace vastrelline
