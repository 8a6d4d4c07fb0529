// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/SectionKeys.h"

namespace vastrelline {

// The key under which the stage at a position of the stage list finds its own setting: position 3 and
// "BLOCK_SIZE" give "03_BLOCK_SIZE". Positions count from 0; from 100 on they take three digits.
std::wstring MakeNumberedKey(int32_t position, std::wstring_view key);

// Reads the keys of the stage at a position: Read(L"BLOCK_SIZE", ...) reads "03_BLOCK_SIZE" for position 3.
class NumberedKeys : public SectionKeys {
public:
    NumberedKeys(const std::wstring& iniPath, const std::wstring& section, int32_t position)
        : SectionKeys(iniPath, section, MakeNumberedKey(position, L"")) {}
};

}  // namespace vastrelline
