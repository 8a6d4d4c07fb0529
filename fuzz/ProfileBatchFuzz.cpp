// SPDX-License-Identifier: Apache-2.0

// Several keys of any profile set at once: the same bytes as one edit after the other. The input's head is
// the profile, its tail picks section, keys and values, so that a text at the start stays a text.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "profile_text/ProfileEdit.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

const std::wstring kSections[] = {L"a", L"", L"Settings", L" a ", L"a]b", L"x\ny", L"\u00C4"};
// No two of one name; those that cannot stand in a line come last.
const std::wstring kKeys[] = {L"k",        L"KEY", L"Rotation", L"Flip", L"k2",  L"\u0436",
                              L" spaced ", L"",    L"[k",       L";k",   L"k=l", L"x\ny"};
const std::wstring kValues[] = {L"1", L"", L" v ", L"\"q\"", L"a]b", L"\U0001F600", L"-2147483648", L"x\ny"};

template <typename Text, size_t Count>
const Text& Pick(const Text (&texts)[Count], size_t number) {
    return texts[number % Count];
}

std::vector<ProfileValue> TakeValues(InputTail& tail) {
    constexpr size_t kMostValues = 10;
    constexpr size_t kUsualKeys = 7;
    constexpr size_t kUsualValues = 7;
    const bool isUsual = tail.Take<uint8_t>() % 4 != 0;
    const size_t count = tail.Take<uint8_t>() % (kMostValues + 1);
    std::vector<ProfileValue> values;
    for (size_t i = 0; i < count; ++i) {
        const size_t key = tail.Take<uint8_t>();
        const size_t value = tail.Take<uint8_t>();
        ProfileValue wish{isUsual ? kKeys[key % kUsualKeys] : Pick(kKeys, key),
                          isUsual ? kValues[value % kUsualValues] : Pick(kValues, value)};
        const bool isNew = std::none_of(values.begin(), values.end(),
                                        [&](const ProfileValue& other) { return other.key == wish.key; });
        if (isNew) values.push_back(std::move(wish));
    }
    return values;
}

// Nothing: one of them is impossible.
std::optional<std::string> EditOneByOne(const std::string& before, const std::wstring& section,
                                        const std::vector<ProfileValue>& values) {
    std::string bytes = before;
    for (const ProfileValue& value : values) {
        const ProfileEditResult result =
            EditProfile(bytes, section.c_str(), value.key.c_str(), value.value.c_str());
        if (result == ProfileEditResult::Impossible) return std::nullopt;
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t kLargestProfile = 4096;
    InputTail tail(data, size);
    const std::wstring& section = Pick(kSections, tail.Take<uint8_t>());
    const std::vector<ProfileValue> values = TakeValues(tail);
    const std::string before(tail.Data(), tail.Data() + std::min(tail.Size(), kLargestProfile));

    const std::optional<std::string> batch = SetProfileValues(ProfileText(before), section, values);
    Require(batch == EditOneByOne(before, section, values),
            "several edits at once are the edits one after the other");
    if (!batch) return 0;
    Require(SetProfileValues(ProfileText(*batch), section, values) == batch,
            "the same again changes nothing");
    return 0;
}
