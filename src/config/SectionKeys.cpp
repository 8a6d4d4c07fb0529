// SPDX-License-Identifier: Apache-2.0
#include "config/SectionKeys.h"

#include <utility>

#include "pixels/Truncate.h"

namespace vastrelline {

SectionKeys::SectionKeys(const std::wstring& iniPath, const std::wstring& section)
    : SectionKeys(iniPath, section, L"") {}

SectionKeys::SectionKeys(const std::wstring& iniPath, const std::wstring& section, std::wstring prefix)
    : profile_(nullptr, iniPath.c_str(), 1), section_(section), prefix_(std::move(prefix)) {}

void SectionKeys::Read(const wchar_t* key, int32_t& value) const {
    value = profile_.ReadProfileInt(section_, prefix_ + key, value);
}

void SectionKeys::Read(const wchar_t* key, double& value) const {
    value = profile_.ReadProfileDouble(section_, prefix_ + key, value);
}

void SectionKeys::Read(const wchar_t* key, float& value) const {
    value = static_cast<float>(profile_.ReadProfileDouble(section_, prefix_ + key, value));
}

void SectionKeys::Read(const wchar_t* key, std::wstring& value) const {
    value = profile_.ReadProfileString(section_, prefix_ + key, value);
}

void SectionKeys::ReadTruncated(const wchar_t* key, int32_t& value) const {
    double number = value;
    Read(key, number);
    value = TruncateToInt32(number);
}

}  // namespace vastrelline
