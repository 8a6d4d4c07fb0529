// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "config/LoadedProfile.h"

namespace vastrelline {

// The one way to a profile file. What one object reads is one version of the file: within a processing call
// the version that the call has read at its start (CallProfile), otherwise the file as it is when the object
// is made; nothing is kept from call to call but values that could not be stored, so that an edit takes
// effect on the next frame. What is missing gives the default.
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

    // How the reading of the file ended. Unless it is Done, all keys are missing.
    ReadResult State() const;

    // The bytes of the file as it was read.
    const std::string& FileBytes() const;

    // The leading decimal digits of the value, with a leading minus sign, modulo 2^32; 0 if there are none.
    int32_t ReadProfileInt(const std::wstring& section, const std::wstring& key, int32_t defaultValue) const;

    // The value, cut to 260 characters.
    std::wstring ReadProfileString(const std::wstring& section, const std::wstring& key,
                                   const std::wstring& defaultValue) const;

    // The number at the start of the value; 0.0 if there is none, also for an empty value. The default goes
    // through text with six decimal places: 0.0000001 comes back as 0.0.
    double ReadProfileDouble(const std::wstring& section, const std::wstring& key, double defaultValue) const;

    // Sets a value for whoever reads this profile within the running call. StoreValues brings it to the file.
    void WriteProfileInt(const std::wstring& section, const std::wstring& key, int32_t value) const;

    // Brings all values that were written to the file, as LoadedProfile::Store. Returns whether it holds them
    // now; callers may ignore it.
    bool StoreValues() const;

    // 1 if the section holds at least one line "key=value", else 0.
    int32_t SectionHasEntries(const std::wstring& section) const;

    // Whether a section has a key, whatever its value.
    bool HasKey(const std::wstring& section, const std::wstring& key) const;

    // Hands over the names of all keys of a section in the order of the file, whatever their number.
    void ForEachKey(const std::wstring& section,
                    const std::function<void(const std::wstring& key)>& use) const;

private:
    std::wstring path_;
    [[maybe_unused]] int32_t reserved_ = 0;  // never read
    std::shared_ptr<LoadedProfile> profile_;
};

}  // namespace vastrelline
