// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keys/KeyTable.h"
#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

enum class ChainKind : uint8_t { Configured, Extended, LowExposure, Fixed, Cr };

// "configured chain", for people.
std::string_view ChainName(ChainKind chain);

// What a PROCMODE runs from an export.
ChainKind ChainOf(int32_t procMode, ExportKind exportKind);

// Whether a stage list of the chain runs the stage of a number: HDR needs the low-exposure or the extended
// one.
bool RunsInList(ChainKind chain, int32_t stageNumber);

enum class PlaceRole : uint8_t {
    Settings,     // plain keys of no single stage
    Sensor,       // of section Settings
    ListedStage,  // of a stage list
    PassedOver,   // in the list, but with a number that the chain does not run
    FixedStep,
    LowSettings,  // of section IP_LOWMODE: what the curve stages read there for themselves
    LowStage,     // of section IP_LOWMODE, for a frame of low exposure
};

// A key that a run asks for.
struct PlannedKey {
    std::string name;           // with its position: "04_MAX_SLOPE"
    const Key* key;             // never null
    const ProfileEntry* entry;  // the line that is read; null: missing, the default holds
};

// One place of a run that reads keys.
struct PlannedPlace {
    PlaceRole role = PlaceRole::Settings;
    std::string section;              // where its keys stand
    std::optional<int32_t> position;  // in a list
    int32_t stageNumber = 0;          // 0: no stage
    const Stage* stage = nullptr;     // null: no stage, or none of that number
    bool runs = true;                 // false: a fixed step whose switch is off, a stage that is passed over
    bool isSwitchedOn = true;  // of a fixed step; the curve stage runs all the same, as the linear curve
    std::vector<PlannedKey> keys;
};

// What a run of a section would do and read.
struct SectionPlan {
    ChainKind chain = ChainKind::Fixed;
    std::string section;
    bool hasSection = false;          // else it runs on defaults
    std::optional<int32_t> procMode;  // as it stands there
    int32_t functionCount = 0;
    std::vector<PlannedPlace> places;         // in the order of the run
    std::vector<const ProfileEntry*> unread;  // lines of the section that count and that nothing here reads
};

// The plan points into the file, which must outlive it.
SectionPlan MakeSectionPlan(const ProfileFile& file, std::string_view section, ExportKind exportKind);

// The same as if PROCMODE and FunctionCount were these.
SectionPlan MakeSectionPlan(const ProfileFile& file, std::string_view section, ExportKind exportKind,
                            int32_t procMode, int32_t functionCount);

// The key with its position: "04_MAX_SLOPE", from 100 on with three digits.
std::string NumberedKeyName(int32_t position, std::string_view key);

// "NN_Function_Number" as a row of the key table.
const Key& ListNumberKey();

// A key's position and the rest, as in NumberedKeyName; nothing for every other name, "4_MAX_SLOPE" included.
struct NumberedName {
    int32_t position;
    std::string_view key;
};
std::optional<NumberedName> SplitNumberedKey(std::string_view name);

// An integer key's value as the library reads it; the default where the key is missing.
int32_t ReadIntegerKey(const ProfileFile& file, std::string_view section, std::string_view key,
                       int32_t defaultValue);

// The positions below the count at which the section's list holds a number, ascending.
std::vector<int32_t> ListedPositions(const ProfileFile& file, std::string_view section,
                                     int32_t functionCount);

}  // namespace vastrelline
