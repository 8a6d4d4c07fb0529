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

constexpr std::string_view kCommonNotes[] = {
    "With PROCMODE 3 a frame found to be low reads its stages' keys, and OUTPUTRANGE of the curve stages, from section IP_LOWMODE at fixed positions: 0 Gaussian, 1 preProcessing, 2 stretch, 3 and 4 CLAHE, 5 linear, 6 gamma. Without that section they run on their defaults. Everything else on this page comes from the section that the host named.",
    "The decision divides the object's pixels below level 100 by all of the object's pixels; the object is what lies below the threshold of Otsu (1979). `Getdose_ImageInfo` gives the figures.",
};
constexpr SensibleRange kCommonPROCMODESensible[] = {
    {"", {}, 1.0, 1.0, ValueShape::Any},
    {"", {}, 2.0, 2.0, ValueShape::Any},
    {"", {}, 3.0, 3.0, ValueShape::Any},
};
constexpr SensibleRange kCommonSAVEIMAGESensible[] = {
    {"", {}, 0.0, 0.0, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
};
constexpr SensibleRange kCommonBITSTOREDSensible[] = {{"", {}, 12.0, 12.0, ValueShape::Any}};
constexpr SensibleRange kCommonSATURATIONVALUESensible[] = {
    {"", {}, 1.0, std::numeric_limits<double>::infinity(), ValueShape::Any},
};
constexpr SensibleRange kCommonOUTPUTRANGESensible[] = {{"", {}, 4095.0, 4095.0, ValueShape::Any}};
constexpr SensibleRange kCommonSETCLIPBINSensible[] = {
    {"", {}, 0.0005, 0.1, ValueShape::Any},
    {"", {}, 1.0, 1.0, ValueShape::Any},
};
constexpr SensibleRange kCommonINVERSEINTENSITYSensible[] = {{"", {}, 0.0, 3.0, ValueShape::Any}};
constexpr int32_t kCommonINVERSELOGRATIOWhen0[] = {2};
constexpr int32_t kCommonINVERSELOGRATIOWhen1[] = {3};
constexpr SensibleRange kCommonINVERSELOGRATIOSensible[] = {
    {"INVERSE_INTENSITY", kCommonINVERSELOGRATIOWhen0, 0.05, 2.0, ValueShape::Any},
    {"INVERSE_INTENSITY", kCommonINVERSELOGRATIOWhen1, 0.5, 2.0, ValueShape::Any},
};
constexpr SensibleRange kCommonFunctionCountSensible[] = {{"", {}, 0.0, 99.0, ValueShape::Any}};
constexpr Key kCommonKeys[] = {
    {"CAPTION", KeyType::Text, "", "", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"VERSION", KeyType::Text, "", "", 0, true, {},
     "any text", {},
     "Printed in the log's start line.",
     "", std::nullopt},
    {"PROCMODE", KeyType::Integer, "1", "1", 0, true, {},
     "1, 2, 3", kCommonPROCMODESensible,
     "2: configured chain. 3: the same with the exposure decision, in `ImageProcessingS` and "
     "`ImageProcessing_NS`. Everything else: [fixed chain](fixed.md). `ImageProcessingCR` does not ask.",
     "", std::nullopt},
    {"SAVE_IMAGE", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kCommonSAVEIMAGESensible,
     "Not 0: raw dumps and curve files are written to WRITE_PATH.",
     "", std::nullopt},
    {"SAVE_LOG", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kCommonSAVEIMAGESensible,
     "Not 0: ExtraOralLog.txt beside the profile is appended to.",
     "", std::nullopt},
    {"AUTOWINDOWING", KeyType::Integer, "0", "0", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"WRITE_PATH", KeyType::Text, "", "", 0, true, {},
     "a folder that exists, with a separator at its end", {},
     "What the names of dumps and curve files are joined to, directly.",
     "", std::nullopt},
    {"BITALLOCATED", KeyType::Integer, "16", "0", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"BITSTORED", KeyType::Integer, "12", "0", 0, true, {},
     "12", kCommonBITSTOREDSensible,
     "Significant bits; the largest pixel value is 2 to that power, minus 1. Above 16 the frame is first "
     "rescaled to 16 bits.",
     "", std::nullopt},
    {"LITTLEENDIAN", KeyType::Integer, "1", "0", 0, false, {},
     "", {},
     "No effect.",
     "", std::nullopt},
    {"SATURATION_VALUE", KeyType::Integer, "4095", "0", 0, true, {},
     "1 or more: the level at which the sensor saturates", kCommonSATURATIONVALUESensible,
     "Pixels from here on take the brightest level below it that occurs. 0 or below makes the frame black "
     "before the inversion.",
     "", std::nullopt},
    {"OUTPUTRANGE", KeyType::Integer, "4095", "0", 0, true, {},
     "4095", kCommonOUTPUTRANGESensible,
     "Top of the result of the sigmoid, gamma and linear stages, and the window of the backup bitmap.",
     "", std::nullopt},
    {"SETCLIPBIN", KeyType::Number, "0.5", "0", 0, true, {},
     "0.0005 to 0.1; 1: never low", kCommonSETCLIPBINSensible,
     "PROCMODE 3: an exposure is low if the fraction of the object's pixels below level 100 is greater. "
     "Unexposed corners count as object: keep above their share.",
     "", std::nullopt},
    {"MSGBOX_ENABLE", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kCommonSAVEIMAGESensible,
     "PROCMODE 3, not 0: the decision and its figures are shown, in a modal message box on Windows, on "
     "standard error elsewhere.",
     "", std::nullopt},
    {"INTRAORAL_MASK", KeyType::Integer, "1", "0", 0, true, {},
     "0 or 1", kCommonSAVEIMAGESensible,
     "Not 0: the sensor's rounded corners are filled with mirrored image content before the stages and set"
     " to the background after them: 0 in an inverted frame, otherwise the largest pixel. The first two "
     "pixels of the frame, if masked, become 4095 and keep the full range in it.",
     "", std::nullopt},
    {"INVERSE_INTENSITY", KeyType::Integer, "1", "0", 0, true, {},
     "0 to 3", kCommonINVERSEINTENSITYSensible,
     "Inversion before the stages. 0: none. 1: plain. 2: logarithmic. 3: power curve. Other: pixels stay.",
     "", std::nullopt},
    {"INVERSE_LOGRATIO", KeyType::Number, "0.2", "0", 0, true, {},
     "mode 2: 0.05 to 2; mode 3: 0.5 to 2", kCommonINVERSELOGRATIOSensible,
     "Mode 2: how straight the curve is (more is straighter). Mode 3: the exponent; negative: the other "
     "family of the [gamma curve](../stages/gamma.md).",
     "", std::nullopt},
    {"FunctionCount", KeyType::Integer, "0", "0", 0, true, {},
     "0 to 99", kCommonFunctionCountSensible,
     "Length of the stage list. Positions without a number, and numbers that no stage has, are passed "
     "over.",
     "", std::nullopt},
    {"SAVE_BACKUP", KeyType::Integer, "0", "0", 0, true, {},
     "0 or 1", kCommonSAVEIMAGESensible,
     "Not 0: the run's input as a raw file and its result as a bitmap are kept in SAVE_BACKUPPATH.",
     "", std::nullopt},
    {"SAVE_BACKUPPATH", KeyType::Text, "", "", 0, true, {},
     "a folder; its last level is made", {},
     "Where backups go. Names begin with date, time and the folder's own name.",
     "", std::nullopt},
};
constexpr Settings kCommonSettings = {SettingsGroup::Common, "Common settings", "common",
    R"text(Plain keys of the section that the host names, read by PROCMODE 2 and 3 (the configured chain and its relatives). A
section without any line gives the driver a record of zeros and empty texts; a stage that reads it for itself takes the
defaults below. The stage list is `FunctionCount` and one `NN_Function_Number` for each position NN, counted from 00; a
stage's own keys carry the same prefix.)text",
    kCommonNotes, kCommonKeys};

}  // namespace

const Settings& CommonRows() { return kCommonSettings; }

}  // namespace vastrelline
