// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keys/KeyTable.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "profile/ValueReading.h"

namespace vastrelline {

// One value of a run.
struct EffectiveValue {
    std::string name;  // as a profile has it: "03_MAX_SLOPE"
    const Key* key;    // never null
    size_t line =
        0;  // where the key stands; 0: nowhere. One without an equals sign has its line and its default
    ValueReading reading;
};

// One place of a run with what it reads there.
struct EffectivePlace {
    PlaceRole role = PlaceRole::Settings;
    std::string section;
    std::optional<int32_t> position;  // in a list
    int32_t stageNumber = 0;          // 0: no stage
    const Stage* stage = nullptr;     // null: no stage, or none of that number
    bool runs = true;
    std::vector<EffectiveValue> values;
};

// Every value that a run would use, place by place in the order of the run, as the library would read it:
// what is missing has the library's default.
//
// The ten values of the sensor stand in section Settings as the first run finds them. A run of the configured
// family writes those of the sensor's own profile there before it uses them.
std::vector<EffectivePlace> ReadEffectiveValues(const ProfileFile& file, const SectionPlan& plan);

// Whether a place is a step of its chain: all but settings.
bool IsStep(const EffectivePlace& place);

// "Common settings", "04 CLAHE", "Histogram stretch", "IP_LOWMODE 00 Gaussian"; for people.
std::string PlaceTitle(const EffectivePlace& place);

// "settings", "sensor", "listed-stage", "passed-over", "fixed-step", "low-settings", "low-stage"
std::string_view RoleName(PlaceRole role);

// Whether a value's reading is what stands in the profile or the default for what does not.
bool IsAsWritten(const ValueReading& reading);

}  // namespace vastrelline
