// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "keys/KeyTable.h"

namespace vastrelline {

// A value as the library holds it; the type is that of the key: Integer and CutNumber, Number, SingleNumber,
// Text.
using ReadValue = std::variant<int32_t, double, float, std::wstring>;

// Where a value has come from, in one word.
enum class ReadingMark : uint8_t {
    FromFile,  // as it stands there
    Default,   // the profile lacks the key
    Cut,       // longer than what the library reads
    Misread,   // something else than what stands there
};

// In what way a value is not what stands in the profile.
enum class ReadingSlip : uint8_t {
    None,
    NoValue,       // nothing where a number is read: 0
    NoNumber,      // text where a number is read: 0
    DecimalComma,  // "1,5": 1
    TextBehind,    // "12abc": 12
    Fraction,      // "2.9" where an integer is read: 2
    Wrapped,       // too many digits for an integer
    NotFinite,     // infinite or no number at all
    TooSmall,      // a number too small for its type: 0
    TooLong,       // cut after 260 characters
};

// "from-file", "default", "cut", "misread"
std::string_view MarkName(ReadingMark mark);

// What the library makes of one value.
struct ValueReading {
    ReadValue value;
    ReadingMark mark = ReadingMark::Default;
    ReadingSlip slip = ReadingSlip::None;  // why it is Cut or Misread
};

// Reads a value as the library does.
//
// written       what stands behind the equals sign, without blanks around, with quotes, as
//               ProfileText::FindValue gives it; nothing: the default counts
// defaultText   as the key table has it
ValueReading ReadWritten(const std::optional<std::wstring>& written, KeyType type,
                         std::string_view defaultText);

// "the decimal sign is a point: read as 1": why a value is cut or misread; empty for the other marks.
std::string DescribeSlip(const ValueReading& reading);

// A value for people and for profiles: read back it is the same. Numbers have as few digits as that takes; a
// text stands as it is, without quotes.
std::string FormatReadValue(const ReadValue& value);

}  // namespace vastrelline
