#include "stages/clahe/ClaheParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

ClaheParams ReadClaheParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    ClaheParams params;
    params.BLOCK_SIZE =
        profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, L"BLOCK_SIZE"), params.BLOCK_SIZE);
    params.HISTO_BINS =
        profile.ReadProfileInt(section, MakeNumberedKey(stageNumber, L"HISTO_BINS"), params.HISTO_BINS);
    params.MAX_SLOPE =
        profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, L"MAX_SLOPE"), params.MAX_SLOPE);
    return params;
}

}  // namespace vastrelline
