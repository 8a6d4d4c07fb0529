#include "config/CRegistryIO.h"

#include <algorithm>
#include <array>

#include "platform/ProfileFile.h"
#include "platform/TextFormat.h"

namespace vastrelline {

namespace {

// One more than the longest value that is read, for the terminator.
constexpr uint32_t kValueSize = 261;
// The largest list of a section's lines that is looked at, in characters.
constexpr uint32_t kSectionSize = 32767;

std::wstring TextOrEmpty(const wchar_t* text) {
    return text != nullptr ? std::wstring(text) : std::wstring();
}

}  // namespace

CRegistryIO::CRegistryIO(const wchar_t* folder, const wchar_t* name, int32_t isFullPath)
    : path_(isFullPath != 0 ? TextOrEmpty(name)
                            : FormatText(L"%s\\%s", {TextOrEmpty(folder), TextOrEmpty(name)})) {}

int32_t CRegistryIO::ReadProfileInt(const std::wstring& section, const std::wstring& key,
                                    int32_t defaultValue) const {
    return PlatformProfileInt(section.c_str(), key.c_str(), defaultValue, path_.c_str());
}

std::wstring CRegistryIO::ReadProfileString(const std::wstring& section, const std::wstring& key,
                                            const std::wstring& defaultValue) const {
    std::array<wchar_t, kValueSize> value{};
    PlatformProfileString(section.c_str(), key.c_str(), defaultValue.c_str(), value.data(), kValueSize,
                          path_.c_str());
    return {value.data()};
}

double CRegistryIO::ReadProfileDouble(const std::wstring& section, const std::wstring& key,
                                      double defaultValue) const {
    return ParseDouble(ReadProfileString(section, key, FormatText(L"%lf", {defaultValue})));
}

bool CRegistryIO::WriteProfileInt(const std::wstring& section, const std::wstring& key, int32_t value) const {
    return PlatformWriteProfile(section.c_str(), key.c_str(), FormatText(L"%i", {value}).c_str(),
                                path_.c_str());
}

int32_t CRegistryIO::SectionHasEntries(const std::wstring& section) const {
    std::vector<wchar_t> entries(kSectionSize);
    if (PlatformProfileSection(section.c_str(), entries.data(), kSectionSize, path_.c_str()) == 0) return 0;
    // The list ends with an empty entry, so one entry that is not empty shows at its very start.
    return entries.front() != L'\0' ? 1 : 0;
}

std::vector<std::wstring> CRegistryIO::ListKeys(const std::wstring& section) const {
    constexpr size_t kLargestList = size_t{1} << 26;  // characters
    constexpr size_t kGrowth = 8;                     // few steps: each of them reads the file again
    std::vector<wchar_t> list(kSectionSize);
    uint32_t count = 0;
    // A list that does not fit is cut to two characters less than the room: ask again with more of it.
    while (true) {
        const auto room = static_cast<uint32_t>(list.size());
        count = PlatformProfileString(section.c_str(), nullptr, nullptr, list.data(), room, path_.c_str());
        if (count + 2 < room || room >= kLargestList) break;
        list.assign(std::min(list.size() * kGrowth, kLargestList), L'\0');
    }
    std::vector<std::wstring> keys;
    for (size_t start = 0; start < count;) {
        keys.emplace_back(&list[start]);
        start += keys.back().size() + 1;
    }
    return keys;
}

}  // namespace vastrelline
