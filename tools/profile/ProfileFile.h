// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/ProfileText.h"

namespace vastrelline {

// Where a person finds a byte of a file: both from 1, the column in characters.
struct TextPlace {
    size_t line = 1;
    size_t column = 1;

    bool operator==(const TextPlace&) const = default;
};

// A line of a section that is neither blank, comment nor head.
struct ProfileEntry {
    ProfileLine line;
    size_t lineNumber = 0;
    std::string key;  // UTF-8, as it is spelled; may be empty
    // The first line of its key, letters of either case, in the first section of its name: the one that is
    // read.
    bool counts = false;
    size_t firstLineNumber = 0;  // of the line that counts for this key

    bool HasValue() const { return line.hasValue; }
};

struct ProfileFileSection {
    std::string name;       // UTF-8; empty: the lines before the first head, or a head without a name
    size_t lineNumber = 0;  // of the head; 0: the lines before the first head
    ByteRange head;         // the name within its line
    bool counts = false;    // the first of its name
    std::vector<ProfileEntry> entries;
};

// A profile file with the numbers of its lines, read by what the library on Linux reads profiles with.
class ProfileFile {
public:
    // Errors   InputError: no regular file, unreadable, more than 64 MiB, which the library takes for none
    static ProfileFile Read(const std::string& path);

    // path   for messages
    ProfileFile(std::string path, std::string bytes);

    const std::string& Path() const { return path_; }
    const ProfileText& Text() const { return text_; }

    // In the order of the file; the lines before the first head first, if there are any.
    std::span<const ProfileFileSection> Sections() const { return sections_; }

    // The section that is read under a name, letters of either case; null if there is none.
    const ProfileFileSection* FindSection(std::string_view name) const;

    // The line that is read for a key; null if there is none. A line without equals sign is one, and has no
    // value.
    const ProfileEntry* FindEntry(std::string_view section, std::string_view key) const;

    // Behind the equals sign, without the blanks around it, with quotes, up to a zero character. Nothing: no
    // equals sign.
    std::optional<std::wstring> ValueOf(const ProfileEntry& entry) const;

    TextPlace PlaceOf(size_t offset) const;

    // Names for "did you mean", those that can be named.
    std::vector<std::string> SectionNames() const;

private:
    using Names = std::map<std::wstring, size_t, std::less<>>;  // by folded name

    void ReadLines();
    void AddEntry(const ProfileLine& line, Names& keys);

    std::string path_;
    ProfileText text_;
    std::vector<size_t> lineStarts_;
    std::vector<ProfileFileSection> sections_;
    Names sectionByName_;
    std::vector<Names> keysOfSection_;  // as sections_: places in entries
};

}  // namespace vastrelline
