// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vastrelline {

// What docs/keys.toml tells of profiles, for programs. The rows are written by scripts/make-docs.py; all
// texts are UTF-8 and live as long as the program.

// How the library reads a key.
enum class KeyType : uint8_t {
    Integer,       // leading digits of the value
    Number,        // the number at the value's start
    SingleNumber,  // the same, rounded to single precision
    CutNumber,     // the same, its fraction cut off
    Text,
};

enum class ValueShape : uint8_t { Any, Odd, Even, PowerOfTwo, NotZero };

// Values that make pictures. Not what is accepted: every value is survived.
struct SensibleRange {
    std::string_view whenKey;         // another key of the same place; empty: always
    std::span<const int32_t> whenIs;  // that key's values for which the range holds
    double smallest;                  // -infinity where open
    double largest;                   // infinity where open
    ValueShape shape;
};

struct Key {
    std::string_view name;  // as the library spells it, without position
    KeyType type;
    std::string_view defaultText;  // what a missing key is read as
    // Read as that instead where the whole section holds no line. A stage that reads a common setting for
    // itself takes defaultText even then.
    std::string_view emptySectionText;
    int32_t stage;  // number; 0: of no single stage
    bool hasEffect;
    std::span<const std::string_view> fixedNames;  // of a stage's key: its names in the fixed chain
    std::string_view range;
    std::span<const SensibleRange> sensible;  // one that holds and fits is enough; none that holds: anything
    std::string_view meaning;
    std::string_view look;
    std::optional<std::string_view> syncText;  // written by a run if the sensor's own profile lacks the key
};

struct Stage {
    int32_t number;
    std::string_view name;   // in the log of the library's developers and in docs
    std::string_view title;  // for people
    std::string_view page;   // below docs/stages/, without ending
    std::string_view text;   // Markdown
    std::string_view look;
    std::string_view source;
    std::span<const std::string_view> notes;
    std::span<const std::string_view> logWords;       // of the configured chain's log lines
    std::span<const std::string_view> fixedLogWords;  // of the fixed chain's
    std::span<const std::string_view> dumps;
    std::span<const std::string_view> fixedDumps;
    std::span<const std::string_view> curves;
    std::span<const std::string_view> fixedCurves;
    std::span<const std::string_view> fixedSwitches;  // empty: the fixed chain has no such stage
    std::span<const Key> keys;                        // of the configured chain, without position
};

enum class SettingsGroup : uint8_t {
    Common,  // plain keys of the section of a configured chain
    Fixed,   // plain keys of the section of the fixed and the CR chain, stages' keys included
    Sensor,  // of section Settings
};

struct Settings {
    SettingsGroup group;
    std::string_view title;
    std::string_view page;  // below docs/settings/, without ending
    std::string_view text;
    std::span<const std::string_view> notes;
    std::span<const Key> keys;
};

// A step of the fixed chain, in the order in which they run.
struct FixedStep {
    std::string_view switchKey;  // not 0 runs it; POST_SIGMOID_LUT at 0 runs the linear curve instead
    int32_t stage;               // number; 0: the inversion
    std::span<const std::string_view> keys;  // that it reads, beside the switch
    bool isInCrChain;
};

// Where the library knows a key name.
struct KeyPlace {
    const Stage* stage;                  // its keys carry a position; null for a setting
    std::optional<SettingsGroup> group;  // nothing for a key of a stage
    const Key* key;
};

inline constexpr std::string_view kSensorSectionName = "Settings";
inline constexpr std::string_view kLowSectionName = "IP_LOWMODE";
inline constexpr std::string_view kListCountKey = "FunctionCount";
inline constexpr std::string_view kListNumberKey = "Function_Number";  // with a position before it

// In the order of their numbers.
std::span<const Stage> AllStageRows();

// Null if no stage has the number.
const Stage* FindStage(int32_t number);

// Whether a name is that of a stage's key; the case of letters counts nowhere.
const Key* FindStageKey(const Stage& stage, std::string_view name);

const Settings& SettingsOf(SettingsGroup group);
const Key* FindSetting(SettingsGroup group, std::string_view name);

// All places of a name, stages first.
std::vector<KeyPlace> FindKeyPlaces(std::string_view name);

std::span<const FixedStep> FixedSteps();

// The numbers of the stages that a frame of low exposure runs, each at the position that names its keys in
// section IP_LOWMODE.
std::span<const int32_t> LowSequence();

// Whether two names are the same but for the case of ASCII letters. Names of the table have no others.
bool IsSameKeyName(std::string_view one, std::string_view other);

}  // namespace vastrelline
