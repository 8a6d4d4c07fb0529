#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vastrelline {

// The one way to a profile file. Nothing is cached: every read opens the file as it is now, so that an edit
// takes effect on the next frame. No operation reports a failure: a missing file, section or key gives the
// default.
class CRegistryIO {
public:
    // isFullPath   not 0: the path is `name` as it stands; 0: `folder`, a backslash and `name`. A null text
    //              counts as empty
    CRegistryIO(const wchar_t* folder, const wchar_t* name, int32_t isFullPath);
    virtual ~CRegistryIO() = default;
    CRegistryIO(const CRegistryIO&) = default;
    CRegistryIO& operator=(const CRegistryIO&) = default;
    CRegistryIO(CRegistryIO&&) = default;
    CRegistryIO& operator=(CRegistryIO&&) = default;

    // The leading decimal digits of the value, with a leading minus sign, modulo 2^32; 0 if there are none.
    int32_t ReadProfileInt(const std::wstring& section, const std::wstring& key, int32_t defaultValue) const;

    // The value, cut to 260 characters.
    std::wstring ReadProfileString(const std::wstring& section, const std::wstring& key,
                                   const std::wstring& defaultValue) const;

    // The number at the start of the value; 0.0 if there is none, also for an empty value. The default goes
    // through text with six decimal places: 0.0000001 comes back as 0.0.
    double ReadProfileDouble(const std::wstring& section, const std::wstring& key, double defaultValue) const;

    // Returns whether the value stands in the file now; callers may ignore it.
    bool WriteProfileInt(const std::wstring& section, const std::wstring& key, int32_t value) const;

    // 1 if the section holds at least one line "key=value", else 0.
    int32_t SectionHasEntries(const std::wstring& section) const;

    // The names of all keys of a section in the order of the file, whatever their number.
    std::vector<std::wstring> ListKeys(const std::wstring& section) const;

private:
    std::wstring path_;
    [[maybe_unused]] int32_t reserved_ = 0;  // never read
};

}  // namespace vastrelline
