// SPDX-License-Identifier: Apache-2.0
#include "profile_text/CaseFolding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vastrelline {

namespace {

// A run of upper-case letters. Where upper and lower case take turns, only every second character of the
// run, from its first one on, is an upper-case letter.
struct UpperCaseRun {
    int32_t first;
    int32_t last;
    int32_t distance;  // to the lower-case letter
    int32_t step;
};

// Sorted by the letter. What is left out on purpose: U+0130, whose small letter is the one of I with
// another rule in each language, and U+00DF, whose capital is two letters.
constexpr std::array<UpperCaseRun, 32> kUpperCaseRuns = {{
    {0x0041, 0x005A, 32, 1},     // A to Z
    {0x00C0, 0x00D6, 32, 1},     // Latin-1
    {0x00D8, 0x00DE, 32, 1},     //
    {0x0100, 0x012E, 1, 2},      // Latin Extended-A
    {0x0132, 0x0136, 1, 2},      //
    {0x0139, 0x0147, 1, 2},      //
    {0x014A, 0x0176, 1, 2},      //
    {0x0178, 0x0178, -121, 1},   // Y with diaeresis, whose small letter is in Latin-1
    {0x0179, 0x017D, 1, 2},      //
    {0x01CD, 0x01DB, 1, 2},      // Latin Extended-B, in part
    {0x01DE, 0x01EE, 1, 2},      //
    {0x01F8, 0x021E, 1, 2},      //
    {0x0222, 0x0232, 1, 2},      //
    {0x0386, 0x0386, 38, 1},     // Greek
    {0x0388, 0x038A, 37, 1},     //
    {0x038C, 0x038C, 64, 1},     //
    {0x038E, 0x038F, 63, 1},     //
    {0x0391, 0x03A1, 32, 1},     //
    {0x03A3, 0x03AB, 32, 1},     //
    {0x03C2, 0x03C2, 1, 1},      // the sigma at the end of a word has the same capital
    {0x0400, 0x040F, 80, 1},     // Cyrillic
    {0x0410, 0x042F, 32, 1},     //
    {0x0460, 0x0480, 1, 2},      //
    {0x048A, 0x04BE, 1, 2},      //
    {0x04C0, 0x04C0, 15, 1},     //
    {0x04C1, 0x04CD, 1, 2},      //
    {0x04D0, 0x052E, 1, 2},      //
    {0x0531, 0x0556, 48, 1},     // Armenian
    {0x1E00, 0x1E94, 1, 2},      // Latin Extended Additional
    {0x1E9E, 0x1E9E, -7615, 1},  // the capital sharp s, one letter
    {0x1EA0, 0x1EFE, 1, 2},      //
    {0xFF21, 0xFF3A, 32, 1},     // full-width A to Z
}};

}  // namespace

wchar_t FoldCase(wchar_t character) {
    const auto value = static_cast<int32_t>(static_cast<char32_t>(character));
    const auto* const run = std::lower_bound(
        kUpperCaseRuns.begin(), kUpperCaseRuns.end(), value,
        [](const UpperCaseRun& candidate, int32_t wanted) { return candidate.last < wanted; });
    if (run == kUpperCaseRuns.end() || value < run->first || (value - run->first) % run->step != 0)
        return character;
    return static_cast<wchar_t>(value + run->distance);
}

bool EqualFolded(std::wstring_view one, std::wstring_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](wchar_t left, wchar_t right) {
        return left == right || FoldCase(left) == FoldCase(right);
    });
}

}  // namespace vastrelline
