#include "stages/hdr/HdrParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

HdrParams ReadHdrParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    const auto readInt = [&](const wchar_t* key, int32_t& value) {
        value = profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, key), value);
    };
    const auto readFloat = [&](const wchar_t* key, float& value) {
        value =
            static_cast<float>(profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), value));
    };
    HdrParams params;
    readInt(L"HDR_BLOCK_SIZE", params.HDR_BLOCK_SIZE);
    readInt(L"HDR_HISTO_BINS", params.HDR_HISTO_BINS);
    params.HDR_CLIp_LIMIT = profile.ReadProfileDouble(
        section, MakeNumberedKey(stageNumber, L"HDR_CLIp_LIMIT"), params.HDR_CLIp_LIMIT);  // sic
    readFloat(L"MAX_LAMBDA", params.MAX_LAMBDA);
    readFloat(L"WF_SLOPE", params.WF_SLOPE);
    readFloat(L"ALPHA_NORM", params.ALPHA_NORM);
    readFloat(L"ALPHA_HE", params.ALPHA_HE);
    readInt(L"LAYER", params.LAYER);
    return params;
}

}  // namespace vastrelline
