// SPDX-License-Identifier: Apache-2.0
#include "config/StageId.h"

#include <set>
#include <string_view>

#include "config/CRegistryIO.h"
#include "config/NumberedKey.h"
#include "platform/Text.h"

namespace vastrelline {

namespace {

constexpr std::wstring_view kListKey = L"Function_Number";

// The number at the start of a key, as far as its digits go; 0 without digits, -1 past 32 bits.
int32_t LeadingPosition(std::wstring_view key) {
    int64_t position = 0;
    for (const wchar_t character : key) {
        if (character < L'0' || character > L'9') break;
        position = position * 10 + (character - L'0');
        if (position > INT32_MAX) return -1;
    }
    return static_cast<int32_t>(position);
}

}  // namespace

int32_t ReadStageNumber(const std::wstring& iniPath, const std::wstring& section, int32_t position) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    return profile.ReadProfileInt(section, MakeNumberedKey(position, kListKey), 0);
}

std::vector<int32_t> ListStagePositions(const std::wstring& iniPath, const std::wstring& section,
                                        int32_t functionCount) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    std::set<int32_t> positions;
    // A list of usual length is looked up; only one that claims to be endless is worth a walk over all keys.
    constexpr int32_t kUsualCount = 1000;
    if (functionCount <= kUsualCount) {
        for (int32_t position = 0; position < functionCount; ++position) {
            if (profile.HasKey(section, MakeNumberedKey(position, kListKey))) positions.insert(position);
        }
        return {positions.begin(), positions.end()};
    }
    profile.ForEachKey(section, [&](const std::wstring& key) {
        const bool isNumbered = key.front() >= L'0' && key.front() <= L'9';
        const int32_t position = isNumbered ? LeadingPosition(key) : -1;
        if (position < 0 || position >= functionCount) return;
        if (LowerCaseAscii(key) == LowerCaseAscii(MakeNumberedKey(position, kListKey))) {
            positions.insert(position);
        }
    });
    return {positions.begin(), positions.end()};
}

}  // namespace vastrelline
