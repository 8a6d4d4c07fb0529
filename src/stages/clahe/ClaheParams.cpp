// SPDX-License-Identifier: Apache-2.0
#include "stages/clahe/ClaheParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

ClaheParams ReadClaheParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    ClaheParams params;
    keys.Read(L"BLOCK_SIZE", params.BLOCK_SIZE);
    keys.Read(L"HISTO_BINS", params.HISTO_BINS);
    keys.Read(L"MAX_SLOPE", params.MAX_SLOPE);
    return params;
}

}  // namespace vastrelline
