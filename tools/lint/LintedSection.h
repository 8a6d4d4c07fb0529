// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// What a section is for.
enum class SectionRole : uint8_t {
    Host,    // named by a host
    Sensor,  // Settings
    Low,     // IP_LOWMODE
};

// Why nobody reads a line.
enum class UnreadCause : uint8_t {
    Unknown,        // no key of this name anywhere, as far as it can be meant here
    NotAKey,        // no equals sign, or no name before it
    OtherStage,     // a key of a stage that is not at this position
    NoPosition,     // a key of a stage at a position that the list does not have
    BeyondCount,    // a stage number, or a key that fits it, behind the end of the list
    OtherChain,     // a key of a chain that the section's PROCMODE does not run
    OtherSection,   // a key of Settings elsewhere, or one of a host's section in Settings or IP_LOWMODE
    AtOddPosition,  // of a position whose number is missing, misspelt or of no stage: that is told instead
};

struct UnreadLine {
    const ProfileEntry* entry;
    UnreadCause cause;
};

// A section as the rules see it: read as the run of it that reads the most.
struct LintedSection {
    const ProfileFile* file;
    const ProfileFileSection* section;  // that counts
    SectionRole role = SectionRole::Host;
    SectionPlan plan;              // its places all stand in this section
    bool isModeDoubtful = false;   // PROCMODE is missing or misspelt where a list stands: taken as 2
    bool isCountDoubtful = false;  // FunctionCount is missing or misspelt: taken from the list
    int32_t listEnd = 0;           // one more than the last position with a stage number, whatever the count
    std::vector<UnreadLine> unread;
    std::map<int32_t, size_t> placeByPosition;  // in plan.places
    // Of the positions that the list names, also behind its count, and of those of the low sequence.
    std::map<int32_t, const Stage*> stageByPosition;
    // Lines that nobody reads and that look like a stage number, misspelt.
    std::vector<const ProfileEntry*> misspeltNumbers;

    bool RunsList() const { return role == SectionRole::Host && plan.chain != ChainKind::Fixed; }
    const ProfileEntry* Find(std::string_view key) const { return file->FindEntry(section->name, key); }
    const PlannedPlace* PlaceAt(int32_t position) const;

    // Whether a line looks like the misspelt stage number of a position, or like a misspelt plain key.
    bool HasMisspeltNumber(int32_t position) const;
    bool HasMisspelt(std::string_view name) const;

    // The names of all keys that are read here.
    std::vector<std::string> ReadableNames() const;

    // The names that would be read at a position if the list came as far.
    std::vector<std::string> NamesAt(int32_t position) const;
};

LintedSection MakeLintedSection(const ProfileFile& file, const ProfileFileSection& section);

// The stage that knows a key by this name; the first of several, null if there is none.
const Stage* FindStageOfKey(std::string_view name);

}  // namespace vastrelline
