// SPDX-License-Identifier: Apache-2.0

// Written by scripts/make-docs.py from docs/keys.toml: edit there.
// clang-format off

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "keys/KeyRows.h"
#include "keys/KeyTable.h"

namespace vastrelline {

namespace {

constexpr std::string_view kSensorNotes[] = {
    "The corners are taken from the values only if the frame's size is the sensor's size less the cuts; otherwise they are found in the frame itself: pixels of exactly 0 in two corners.",
    "Corner sizes that do not fit the frame size, and so any at a frame size of 0, give the message \"Wrong parameters of round-corner mask\", and the corners are found in the frame.",
    "Range normalisation is made for 12 bits. It estimates the range by an isodata threshold (Ridler and Calvard, 1978) over the brightest levels; the estimate is never below 200, so a TargetRange up to 200 does nothing. The fixed chain does not have it.",
};
constexpr SensibleRange kSensorRotationSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 2.0, 2.0, ValueShape::Any},
};
constexpr SensibleRange kSensorFlipSensible[] = {{"", {}, 0.0, 3.0, ValueShape::Any}};
constexpr SensibleRange kSensorRCCutOffSensible[] = {
    {"", {}, 1.0, std::numeric_limits<double>::infinity(), ValueShape::Any},
};
constexpr SensibleRange kSensorRCCutOffRSensible[] = {
    {"", {}, 0.0, std::numeric_limits<double>::infinity(), ValueShape::Any},
};
constexpr SensibleRange kSensorTargetRangeSensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 2000.0, 3500.0, ValueShape::Any},
};
constexpr SensibleRange kSensorMinimumValueSensible[] = {{"", {}, 0.0, 100.0, ValueShape::Any}};
constexpr SensibleRange kSensorMaxCutSensible[] = {{"", {}, 0.0, 0.005, ValueShape::Any}};
constexpr Key kSensorKeys[] = {
    {"SerialId", KeyType::Text, "", "", 0, true, {},
     "a folder's name", {},
     "In the sensor's profile only: folder of the connected sensor.",
     "", std::nullopt},
    {"Rotation", KeyType::Integer, "-10", "-10", 0, true, {},
     "0, 1, 2", kSensorRotationSensible,
     "How the delivered frame is turned against the sensor: 0 not, 1 by 90, 2 by -90 degrees, as far as "
     "the corners go. Other: unknown, corners are found in the frame.",
     "", "0"},
    {"Flip", KeyType::Integer, "-10", "-10", 0, true, {},
     "0 to 3", kSensorFlipSensible,
     "How it is mirrored: 0 not, 1 left to right, 2 top to bottom, 3 both. Other: unknown.",
     "", "0"},
    {"RCCutOff", KeyType::Integer, "150", "150", 0, true, {},
     "1 to half of the smaller side", kSensorRCCutOffSensible,
     "Size of the corners' straight cut, in pixels.",
     "", "159"},
    {"RCCutOffR", KeyType::Integer, "170", "170", 0, true, {},
     "0 to the smaller side", kSensorRCCutOffRSensible,
     "Size of the corners' rounding, in pixels.",
     "", "159"},
    {"FrameWidth", KeyType::Integer, "0", "0", 0, true, {},
     "the sensor's width; 0 while it is unknown", kSensorRCCutOffRSensible,
     "Width of the sensor's full frame before any cut, in pixels.",
     "", "0"},
    {"FrameHeight", KeyType::Integer, "0", "0", 0, true, {},
     "the sensor's height; 0 while it is unknown", kSensorRCCutOffRSensible,
     "Height of the sensor's full frame before any cut, in pixels.",
     "", "0"},
    {"ImgCutLeft", KeyType::Integer, "0", "0", 0, true, {},
     "0 or more", kSensorRCCutOffRSensible,
     "Columns cut off at the left of the delivered frame.",
     "", "0"},
    {"ImgCutTop", KeyType::Integer, "0", "0", 0, true, {},
     "0 or more", kSensorRCCutOffRSensible,
     "Rows cut off at the top.",
     "", "0"},
    {"ImgCutRight", KeyType::Integer, "0", "0", 0, true, {},
     "0 or more", kSensorRCCutOffRSensible,
     "Columns cut off at the right; only for the test of the size.",
     "", "0"},
    {"ImgCutBottom", KeyType::Integer, "0", "0", 0, true, {},
     "0 or more", kSensorRCCutOffRSensible,
     "Rows cut off at the bottom; only for the test of the size.",
     "", "0"},
    {"TargetRange", KeyType::Integer, "0", "0", 0, true, {},
     "0, or 2000 to 3500", kSensorTargetRangeSensible,
     "A frame whose estimated range is narrower is multiplied up to it before the inversion. 0: never. "
     "Weak frames become as bright as others, their noise with them.",
     "", std::nullopt},
    {"MinimumValue", KeyType::Integer, "0", "0", 0, true, {},
     "0 to 100", kSensorMinimumValueSensible,
     "A low end of the range below this is raised by it.",
     "", std::nullopt},
    {"MaxCut", KeyType::SingleNumber, "0", "0", 0, true, {},
     "0 to 0.005", kSensorMaxCutSensible,
     "Fraction of the pixels that each of 19 steps down from the top takes in, when the top of the range "
     "is sought.",
     "", std::nullopt},
    {"MinCut", KeyType::SingleNumber, "0", "0", 0, true, {},
     "0 to 0.005", kSensorMaxCutSensible,
     "Fraction of the darkest pixels that the range leaves out.",
     "", std::nullopt},
};
constexpr Settings kSensorSettings = {SettingsGroup::Sensor, "Sensor settings and range", "sensor",
    R"text(Keys of section `Settings`, whatever section the host names. Each run of the configured chain first copies the ten values
of the sensor's own profile here: Rotation, Flip, RCCutOff, RCCutOffR, FrameWidth, FrameHeight and the four cuts. What
that profile lacks is written with the second default of the table; the first holds where the processing profile lacks
the key, as before the first run. The sensor's profile is `Brindmap.ini` in the sensor folder that the build fixed, or
`MultiSensor/<id>/Brindmap.ini` below it, `<id>` being `SerialId` of the former or the folder that the host named to
`ImageProcessing_NE`. Its mode 2 writes twice the frame size, and 2 n - 1 for each corner size.

A host may pass the ten values itself to `ImageProcessingS` and `ImageProcessing_NS`; they then take the place of these.)text",
    kSensorNotes, kSensorKeys};

}  // namespace

const Settings& SensorRows() { return kSensorSettings; }

}  // namespace vastrelline
