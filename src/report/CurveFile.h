// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace vastrelline {

// Writes a tone curve as text for the engineer who tunes a profile: one line "%d\t%d\r\n" per level with the
// level and the curve's value at it. The file is made afresh; nothing reads it back. One that cannot be made
// or written is skipped.
//
// first, last   levels, both inclusive; none if last is below first
// valueAt       the curve's value at a level
void WriteCurveFile(const std::wstring& path, int32_t first, int32_t last,
                    const std::function<int32_t(int32_t level)>& valueAt);

// The same for a table with one entry for each level from 0 on, as far as the table goes.
//
// first   0 or more
void WriteCurveFile(const std::wstring& path, int32_t first, int32_t last, std::span<const uint16_t> table);

}  // namespace vastrelline
