// SPDX-License-Identifier: Apache-2.0
#include "workbench/DeskEdits.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "profile/PlainWords.h"
#include "profile_text/ProfileEdit.h"
#include "profile_text/Utf8.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {
namespace {

[[noreturn]] void Refuse(const std::string& path, std::string_view key) {
    throw InputError(path, std::string(key) + " cannot be set to that: the line could not be read back",
                     "leave line ends and such characters out");
}

// A text ends at its zero for whoever reads the profile.
void TestCharacters(const std::string& path, std::string_view section, std::string_view key,
                    std::string_view value) {
    for (const std::string_view text : {section, key, value})
        if (text.find('\0') != std::string_view::npos) Refuse(path, key.substr(0, key.find('\0')));
}

std::optional<std::wstring> ValueIn(const ProfileFile& file, std::string_view section, std::string_view key) {
    const ProfileEntry* const entry = file.FindEntry(section, key);
    return entry == nullptr ? std::nullopt : file.ValueOf(*entry);
}

std::string ShownValue(const std::optional<std::wstring>& value) {
    constexpr size_t kMost = 24;
    if (!value) return "none";
    return value->empty() ? "empty" : ShortText(EncodeUtf8(*value), kMost);
}

// Names of sections that are read: that one, and then those of both files.
std::vector<std::string> SectionsFrom(std::string_view first, const ProfileFile& before,
                                      const ProfileFile& after) {
    std::vector<std::string> names{std::string(first)};
    const ProfileFileSection* const firstOfAfter = after.FindSection(first);
    const ProfileFileSection* const firstOfBefore = before.FindSection(first);
    for (const ProfileFileSection& section : after.Sections())
        if (section.counts && !section.name.empty() && &section != firstOfAfter)
            names.push_back(section.name);
    for (const ProfileFileSection& section : before.Sections())
        if (section.counts && !section.name.empty() && &section != firstOfBefore &&
            after.FindSection(section.name) == nullptr)
            names.push_back(section.name);
    return names;
}

// Keys of a section that count, in its order.
std::vector<std::string> KeysOf(const ProfileFile& file, std::string_view section) {
    std::vector<std::string> keys;
    const ProfileFileSection* const found = file.FindSection(section);
    if (found == nullptr) return keys;
    for (const ProfileEntry& entry : found->entries)
        if (entry.counts) keys.push_back(entry.key);
    return keys;
}

}  // namespace

std::string SetKey(const std::string& path, const std::string& bytes, std::string_view section,
                   std::string_view key, std::string_view value) {
    TestCharacters(path, section, key, value);
    const ProfileText text(bytes);
    const ProfileValue each{DecodeUtf8(key), DecodeUtf8(value)};
    std::optional<std::string> changed = SetProfileValues(text, DecodeUtf8(section), {&each, 1});
    if (!changed) Refuse(path, key);
    return std::move(*changed);
}

std::string UnsetKey(const std::string& path, const std::string& bytes, const std::string& fileBytes,
                     std::string_view section, std::string_view key) {
    TestCharacters(path, section, key, {});
    const std::optional<std::wstring> own = ValueIn(ProfileFile(path, fileBytes), section, key);
    if (own) return SetKey(path, bytes, section, key, EncodeUtf8(*own));
    std::string changed = bytes;
    const std::wstring name = DecodeUtf8(key);
    if (EditProfile(changed, DecodeUtf8(section).c_str(), name.c_str(), nullptr) ==
        ProfileEditResult::Impossible)
        Refuse(path, key);
    return changed;
}

std::string SwitchOff(const std::string& path, const std::string& bytes, std::string_view section,
                      const std::set<std::string>& offKeys) {
    if (offKeys.empty()) return bytes;
    std::vector<ProfileValue> values;
    for (const std::string& key : offKeys) values.push_back({DecodeUtf8(key), L"0"});
    std::optional<std::string> changed = SetProfileValues(ProfileText(bytes), DecodeUtf8(section), values);
    if (!changed) Refuse(path, *offKeys.begin());
    return std::move(*changed);
}

std::string SwitchKeyOf(const PlannedPlace& place) {
    const bool canSwitch = place.role == PlaceRole::ListedStage || place.role == PlaceRole::PassedOver ||
                           place.role == PlaceRole::FixedStep;
    return canSwitch && !place.keys.empty() ? place.keys.front().name : std::string();
}

std::optional<ToolError> WhyMeaningless(const ProfileFile& file, std::string_view section) {
    const std::optional<MeaninglessRun> meaningless = FindMeaninglessRun(file, section);
    if (!meaningless) return std::nullopt;
    const std::string& text = meaningless->finding.text;
    const size_t end = std::min(text.rfind("; "), text.size());
    return InputError(file.Path(), text.substr(0, end), text.substr(std::min(end + 2, text.size())));
}

std::string DescribeEdits(const ProfileFile& before, const ProfileFile& after, std::string_view section) {
    std::string first;
    size_t count = 0;
    bool isOther = false;
    for (const std::string& name : SectionsFrom(section, before, after)) {
        std::vector<std::string> keys = KeysOf(after, name);
        for (std::string& key : KeysOf(before, name))
            if (after.FindEntry(name, key) == nullptr) keys.push_back(std::move(key));
        for (const std::string& key : keys) {
            const std::optional<std::wstring> old = ValueIn(before, name, key);
            const std::optional<std::wstring> now = ValueIn(after, name, key);
            if (old == now || count++ > 0) continue;
            if (isOther) first.append("[").append(name).append("] ");
            first.append(key).append(" ").append(ShownValue(old)).append(" -> ").append(ShownValue(now));
        }
        isOther = true;
    }
    if (count > 1) first.append(", ").append(std::to_string(count - 1)).append(" more");
    return first;
}

}  // namespace vastrelline
