// SPDX-License-Identifier: Apache-2.0
#include "config/CRegistryIO.h"

#include <array>

#include "config/CallProfile.h"
#include "platform/TextFormat.h"
#include "profile_text/ProfileText.h"
#include "profile_text/ValueText.h"

namespace vastrelline {

namespace {

// With the terminator.
constexpr uint32_t kValueSize = kLongestValue + 1;

std::wstring TextOrEmpty(const wchar_t* text) {
    return text != nullptr ? std::wstring(text) : std::wstring();
}

}  // namespace

CRegistryIO::CRegistryIO(const wchar_t* folder, const wchar_t* name, int32_t isFullPath)
    : path_(isFullPath != 0 ? TextOrEmpty(name)
                            : FormatText(L"%s\\%s", {TextOrEmpty(folder), TextOrEmpty(name)})),
      profile_(LoadProfile(path_)) {}

ReadResult CRegistryIO::State() const { return profile_->State(); }

const std::string& CRegistryIO::FileBytes() const { return profile_->FileBytes(); }

int32_t CRegistryIO::ReadProfileInt(const std::wstring& section, const std::wstring& key,
                                    int32_t defaultValue) const {
    return ReadProfileTextInt(profile_->Text(), section.c_str(), key.c_str(), defaultValue);
}

std::wstring CRegistryIO::ReadProfileString(const std::wstring& section, const std::wstring& key,
                                            const std::wstring& defaultValue) const {
    std::array<wchar_t, kValueSize> value{};
    ReadProfileTextString(profile_->Text(), section.c_str(), key.c_str(), defaultValue.c_str(), value.data(),
                          kValueSize);
    return {value.data()};
}

double CRegistryIO::ReadProfileDouble(const std::wstring& section, const std::wstring& key,
                                      double defaultValue) const {
    return ParseDouble(ReadProfileString(section, key, FormatText(L"%lf", {defaultValue})));
}

void CRegistryIO::WriteProfileInt(const std::wstring& section, const std::wstring& key, int32_t value) const {
    profile_->Set(section, key, FormatText(L"%i", {value}));
}

bool CRegistryIO::StoreValues() const { return StoreProfile(*profile_); }

int32_t CRegistryIO::SectionHasEntries(const std::wstring& section) const {
    // The name counts as it stands, blanks around it and all; only where a key is read they are dropped.
    return profile_->Text().HasEntries(section) ? 1 : 0;
}

bool CRegistryIO::HasKey(const std::wstring& section, const std::wstring& key) const {
    const ProfileText& text = profile_->Text();
    const std::optional<ProfileSection> found = text.FindSection(TrimName(section));
    return found && text.FindEntry(*found, TrimName(key)).has_value();
}

void CRegistryIO::ForEachKey(const std::wstring& section,
                             const std::function<void(const std::wstring& key)>& use) const {
    profile_->Text().ForEachKey(TrimName(section), use);
}

}  // namespace vastrelline
