#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline {

// The key under which the stage at a position of the stage list finds its own setting: position 3 and
// "BLOCK_SIZE" give "03_BLOCK_SIZE". Positions count from 0; from 100 on they take three digits.
std::wstring MakeNumberedKey(int32_t position, std::wstring_view key);

}  // namespace vastrelline
