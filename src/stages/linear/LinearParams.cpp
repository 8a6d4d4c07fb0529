#include "stages/linear/LinearParams.h"

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"
#include "pixels/Truncate.h"

namespace vastrelline {

LinearParams ReadLinearParams(const std::wstring& iniPath, const std::wstring& section, int32_t stageNumber) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    const auto read = [&](const wchar_t* key) {
        return TruncateToInt32(profile.ReadProfileDouble(section, MakeNumberedKey(stageNumber, key), 0.0));
    };
    return {read(L"POST_LINEAR_MODE"), read(L"POST_LINEAR_LIMITBIN"), read(L"POST_LINEAR_BRIGHTOPT")};
}

}  // namespace vastrelline
