// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/CRegistryIO.h"

namespace vastrelline {

// Reads keys of one section of a profile into the fields of a record. A field holds its default and keeps it
// where the profile lacks the key.
class SectionKeys {
public:
    SectionKeys(const std::wstring& iniPath, const std::wstring& section);

    // As ReadProfileInt, ReadProfileDouble and ReadProfileString: the default of a number with a fraction has
    // six decimal places.
    void Read(const wchar_t* key, int32_t& value) const;
    void Read(const wchar_t* key, double& value) const;
    void Read(const wchar_t* key, float& value) const;
    void Read(const wchar_t* key, std::wstring& value) const;

    // An integer whose key may hold a fraction, which is cut off.
    void ReadTruncated(const wchar_t* key, int32_t& value) const;

protected:
    // Every key has this text in front of it in the profile.
    SectionKeys(const std::wstring& iniPath, const std::wstring& section, std::wstring prefix);

private:
    CRegistryIO profile_;
    std::wstring section_;
    std::wstring prefix_;
};

}  // namespace vastrelline
