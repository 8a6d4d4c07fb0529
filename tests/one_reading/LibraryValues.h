// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "profile/ValueReading.h"

namespace vastrelline {

// The values that the library's own readers read from a profile, by their keys without position.
using LibraryValues = std::map<std::string, ReadValue>;

LibraryValues ReadLibraryCommon(const std::wstring& iniPath, const std::wstring& section);
LibraryValues ReadLibraryFixed(const std::wstring& iniPath, const std::wstring& section);
LibraryValues ReadLibraryGeometry(const std::wstring& iniPath);
LibraryValues ReadLibraryTargetRange(const std::wstring& iniPath);

// What a curve stage reads of the common settings for itself.
LibraryValues ReadLibraryCurveSettings(const std::wstring& iniPath, const std::wstring& section);

// The keys of the stage of a number at a position; none for a number of no stage.
LibraryValues ReadLibraryStage(const std::wstring& iniPath, const std::wstring& section, int32_t position,
                               int32_t number);

}  // namespace vastrelline
