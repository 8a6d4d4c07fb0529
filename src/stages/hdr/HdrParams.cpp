// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/HdrParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

HdrParams ReadHdrParams(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    HdrParams params;
    keys.Read(L"HDR_BLOCK_SIZE", params.HDR_BLOCK_SIZE);
    keys.Read(L"HDR_HISTO_BINS", params.HDR_HISTO_BINS);
    keys.Read(L"HDR_CLIp_LIMIT", params.HDR_CLIp_LIMIT);  // sic
    keys.Read(L"MAX_LAMBDA", params.MAX_LAMBDA);
    keys.Read(L"WF_SLOPE", params.WF_SLOPE);
    keys.Read(L"ALPHA_NORM", params.ALPHA_NORM);
    keys.Read(L"ALPHA_HE", params.ALPHA_HE);
    keys.Read(L"LAYER", params.LAYER);
    return params;
}

}  // namespace vastrelline
