// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

#include "profile_text/ProfileEncoding.h"

namespace vastrelline {

enum class LineKind { Blank, Comment, Head, Entry };

// One line of a profile and where its parts lie in the file.
struct ProfileLine {
    LineKind kind = LineKind::Blank;
    ByteRange whole;    // with its line end
    ByteRange content;  // without its line end
    ByteRange name;     // of a head or an entry, without blanks around; may be empty
    bool hasValue = false;
    ByteRange rawValue;  // all behind the equals sign
    ByteRange value;     // the same without blanks around; if nothing is left, the end of rawValue
};

// What is dropped around names and values: blank, tab, vertical tab, form feed, and the end-of-file
// character that old editors leave at the end of a text.
bool IsProfileBlank(uint32_t unit);

// Cuts a profile into lines, from the first to the last. A line ends with CR LF, LF or CR.
//
// Head     "[", a name and the line's last "]"; blanks before, anything behind
// Comment  a semicolon, blanks before
// Entry    everything else that is not blank: a name up to the first equals sign, if there is one
class ProfileLineReader {
public:
    // Reads the lines within `range` of a file; the bytes must outlive the reader. In UTF-16 a last odd
    // byte belongs to no line.
    ProfileLineReader(std::string_view fileBytes, ByteRange range, const ProfileEncoding& encoding);

    std::optional<ProfileLine> Next();

    // The next head, without a look into the lines before it.
    std::optional<ProfileLine> NextHead();

private:
    ProfileLine TakeLine();
    size_t FindLineEnd() const;
    size_t SkipLineEnd(size_t offset) const;
    ByteRange Trim(ByteRange range) const;
    size_t Find(ByteRange range, uint32_t unit) const;      // range.end if it is not there
    size_t FindLast(ByteRange range, uint32_t unit) const;  // likewise
    void ReadParts(ProfileLine& line) const;

    std::string_view bytes_;
    ProfileEncoding encoding_;
    size_t position_;
    size_t end_;
};

}  // namespace vastrelline
