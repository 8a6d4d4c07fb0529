// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/PreProcessingParams.h"

#include "config/NumberedKey.h"

namespace vastrelline {

PreProcessingParams ReadPreProcessingParams(const std::wstring& iniPath, const std::wstring& section,
                                            int32_t position) {
    const NumberedKeys keys(iniPath, section, position);
    PreProcessingParams params;
    keys.Read(L"PREPROCESSING_ENHANCESCALE", params.PREPROCESSING_ENHANCESCALE);
    keys.Read(L"PREPROCESSING_GAUSSIANPOWER", params.PREPROCESSING_GAUSSIANPOWER);
    keys.Read(L"PREPROCESSING_AUMALPHA", params.PREPROCESSING_AUMALPHA);
    keys.Read(L"PREPROCESSING_AUMWEIGHT", params.PREPROCESSING_AUMWEIGHT);
    keys.Read(L"PREPROCESSING_AUMPOWER", params.PREPROCESSING_AUMPOWER);
    keys.Read(L"PREPROCESSING_AUMRANGE", params.PREPROCESSING_AUMRANGE);
    return params;
}

}  // namespace vastrelline
