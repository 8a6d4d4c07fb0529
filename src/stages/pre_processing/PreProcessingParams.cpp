#include "stages/pre_processing/PreProcessingParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"

namespace vastrelline {

PreProcessingParams ReadPreProcessingParams(const std::wstring& iniPath, const std::wstring& section,
                                            int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    PreProcessingParams params;
    const auto read = [&](const wchar_t* key, double& value) {
        value = profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), value);
    };
    read(L"PREPROCESSING_ENHANCESCALE", params.PREPROCESSING_ENHANCESCALE);
    read(L"PREPROCESSING_GAUSSIANPOWER", params.PREPROCESSING_GAUSSIANPOWER);
    read(L"PREPROCESSING_AUMALPHA", params.PREPROCESSING_AUMALPHA);
    read(L"PREPROCESSING_AUMWEIGHT", params.PREPROCESSING_AUMWEIGHT);
    read(L"PREPROCESSING_AUMPOWER", params.PREPROCESSING_AUMPOWER);
    read(L"PREPROCESSING_AUMRANGE", params.PREPROCESSING_AUMRANGE);
    return params;
}

}  // namespace vastrelline
