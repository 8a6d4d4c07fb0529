// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <variant>

#include "config/FixedSettings.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using IntField = int32_t FixedSettings::*;
using DoubleField = double FixedSettings::*;
using TextField = std::wstring FixedSettings::*;

struct FixedKey {
    const char* key;
    std::variant<IntField, DoubleField, TextField> field;
    double defaultValue;  // of a number; the default of a text is the empty one
};

// Every key of the fixed chain.
const FixedKey kKeys[] = {
    {"VERSION", &FixedSettings::VERSION, 0},
    {"SAVE_IMAGE", &FixedSettings::SAVE_IMAGE, 0},
    {"SAVE_LOG", &FixedSettings::SAVE_LOG, 0},
    {"WRITE_PATH", &FixedSettings::WRITE_PATH, 0},
    {"BITALLOCATED", &FixedSettings::BITALLOCATED, 16},
    {"BITSTORED", &FixedSettings::BITSTORED, 12},
    {"LITTLEENDIAN", &FixedSettings::LITTLEENDIAN, 1},
    {"SATURATION_VALUE", &FixedSettings::SATURATION_VALUE, 4095},
    {"OUTPUTRANGE", &FixedSettings::OUTPUTRANGE, 4095},
    {"INTRAORAL_MASK", &FixedSettings::INTRAORAL_MASK, 1},
    {"HISTOGRAM_STRETCH", &FixedSettings::HISTOGRAM_STRETCH, 0},
    {"PRE_MEDIAN", &FixedSettings::PRE_MEDIAN, 0},
    {"PRE_GAUSSIAN", &FixedSettings::PRE_GAUSSIAN, 0},
    {"POST_GAUSSIAN", &FixedSettings::POST_GAUSSIAN, 0},
    {"POST_SIGMOID_LUT", &FixedSettings::POST_SIGMOID_LUT, 0},
    {"POST_GAMMA_LUT", &FixedSettings::POST_GAMMA_LUT, 0},
    {"POST_MEDIAN", &FixedSettings::POST_MEDIAN, 0},
    {"CONTRAST_ENHANCE2", &FixedSettings::CONTRAST_ENHANCE2, 0},
    {"CONTRAST_ENHANCE", &FixedSettings::CONTRAST_ENHANCE, 0},
    {"PYRAMID_PROCESSING", &FixedSettings::PYRAMID_PROCESSING, 0},
    {"PRE_CONTRAST", &FixedSettings::PRE_CONTRAST, 0},
    {"ADAPTIVE_SMOOTHING", &FixedSettings::ADAPTIVE_SMOOTHING, 0},
    {"STRETCH_SEPARATION_CNT", &FixedSettings::STRETCH_SEPARATION_CNT, 0},
    {"RESTRETCH_OPTION", &FixedSettings::RESTRETCH_OPTION, 2},
    {"LEFT_LEN_LIMIT", &FixedSettings::LEFT_LEN_LIMIT, 1000},
    {"RIGHT_LEN_LIMIT", &FixedSettings::RIGHT_LEN_LIMIT, 500},
    {"STRETCH_LEFT_WEIGHT", &FixedSettings::STRETCH_LEFT_WEIGHT, 4.0},
    {"STRETCH_RIGHT_WEIGHT", &FixedSettings::STRETCH_RIGHT_WEIGHT, 4.0},
    {"STRETCH_LIMITBIN", &FixedSettings::STRETCH_LIMITBIN, 50},
    {"INVERSE_INTENSITY", &FixedSettings::INVERSE_INTENSITY, 1},
    {"INVERSE_LOGRATIO", &FixedSettings::INVERSE_LOGRATIO, 0.2},
    {"PRE_MEDIAN_SIZE", &FixedSettings::PRE_MEDIAN_SIZE, 3},
    {"PRE_GAUSSIAN_SIZE", &FixedSettings::PRE_GAUSSIAN_SIZE, 1.0},
    {"GAUSSIAN_SIZE_CONTRAST", &FixedSettings::GAUSSIAN_SIZE_CONTRAST, 3.0},
    // sic
    {"ENAHCNED_RATIO_CONTRAST", &FixedSettings::ENAHCNED_RATIO_CONTRAST, 2.0},
    {"NOISE_WIDTH_CONTRAST", &FixedSettings::NOISE_WIDTH_CONTRAST, 0},
    {"MODE_CONTRAST", &FixedSettings::MODE_CONTRAST, 0},
    {"BLOCK_SIZE", &FixedSettings::BLOCK_SIZE, 64},
    {"HISTO_BINS", &FixedSettings::HISTO_BINS, 256},
    {"MAX_SLOPE", &FixedSettings::MAX_SLOPE, 1.5},
    {"CORRECTVAL", &FixedSettings::CORRECTVAL, 1},
    {"PYRAMID_LAYER", &FixedSettings::PYRAMID_LAYER, 3},
    {"GAUSSIAN_SIZE", &FixedSettings::GAUSSIAN_SIZE, 1.0},
    {"APPLY_VARIABLE_RATIO", &FixedSettings::APPLY_VARIABLE_RATIO, 0},
    {"ENHANCED_RATIO", &FixedSettings::ENHANCED_RATIO, 1.5},
    {"NOISE_WIDTH", &FixedSettings::NOISE_WIDTH, 100},
    {"APPLY_DIFF_ENHANCE", &FixedSettings::APPLY_DIFF_ENHANCE, 1},
    {"NOISE_CUTLIMIT", &FixedSettings::NOISE_CUTLIMIT, 0.01},
    {"POST_GAUSSIAN_SIZE", &FixedSettings::POST_GAUSSIAN_SIZE, 1.0},
    {"POST_SIGMOID_RATIO", &FixedSettings::POST_SIGMOID_RATIO, 0.0},
    {"POST_GAMMA_RATIO", &FixedSettings::POST_GAMMA_RATIO, 0.5},
    {"POST_MEDIAN_SIZE", &FixedSettings::POST_MEDIAN_SIZE, 3},
    {"POST_MEDIAN_REPEAT", &FixedSettings::POST_MEDIAN_REPEAT, 3},
    {"PRECONTRAST_MASK", &FixedSettings::PRECONTRAST_MASK, 15.0},
    {"PRECONTRAST_RATIO", &FixedSettings::PRECONTRAST_RATIO, 1.25},
    {"PRECONTRAST_RESCALE", &FixedSettings::PRECONTRAST_RESCALE, 2.0},
    {"ADAPTIVESMOOTHING_MASK", &FixedSettings::ADAPTIVESMOOTHING_MASK, 15},
    {"ADAPTIVESMOOTHING_ORDER", &FixedSettings::ADAPTIVESMOOTHING_ORDER, 4},
    {"SAVE_BACKUP", &FixedSettings::SAVE_BACKUP, 0},
    {"SAVE_BACKUPPATH", &FixedSettings::SAVE_BACKUPPATH, 0},
};

// The value that a test writes under the key at an index: a different one for each key, and no default.
int32_t WrittenInt(size_t index) { return 10000 + static_cast<int32_t>(index); }
double WrittenDouble(size_t index) { return static_cast<double>(index) + 0.125; }
std::string WrittenText(size_t index) { return "text " + std::to_string(index); }

std::string WrittenValue(size_t index) {
    if (std::holds_alternative<IntField>(kKeys[index].field)) return std::to_string(WrittenInt(index));
    if (std::holds_alternative<DoubleField>(kKeys[index].field)) return std::to_string(WrittenDouble(index));
    return WrittenText(index);
}

std::string SectionWithEveryKey() {
    std::string text = "[Molar]\r\n";
    for (size_t i = 0; i < std::size(kKeys); ++i) {
        text += std::string(kKeys[i].key) + "=" + WrittenValue(i) + "\r\n";
    }
    return text;
}

void ExpectWrittenValues(const FixedSettings& settings) {
    for (size_t i = 0; i < std::size(kKeys); ++i) {
        SCOPED_TRACE(kKeys[i].key);
        if (const auto* number = std::get_if<IntField>(&kKeys[i].field)) {
            EXPECT_EQ(settings.**number, WrittenInt(i));
        } else if (const auto* real = std::get_if<DoubleField>(&kKeys[i].field)) {
            EXPECT_EQ(settings.**real, WrittenDouble(i));
        } else {
            const std::string text = WrittenText(i);
            EXPECT_EQ(settings.*std::get<TextField>(kKeys[i].field), std::wstring(text.begin(), text.end()));
        }
    }
}

void ExpectDefaults(const FixedSettings& settings) {
    for (const FixedKey& key : kKeys) {
        SCOPED_TRACE(key.key);
        if (const auto* number = std::get_if<IntField>(&key.field)) {
            EXPECT_EQ(settings.**number, key.defaultValue);
        } else if (const auto* real = std::get_if<DoubleField>(&key.field)) {
            EXPECT_EQ(settings.**real, key.defaultValue);
        } else {
            EXPECT_EQ(settings.*std::get<TextField>(key.field), L"");
        }
    }
}

class FixedSettingsTest : public testing::Test {
protected:
    void Read(const std::string& profile, FixedSettings& settings,
              const std::wstring& section = L"Molar") const {
        WriteBytes(folder_.Path() / "p.ini", profile);
        ReadFixedSettings(folder_.Wide(L"p.ini"), section, settings);
    }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
};

// Takes the place of any field's first value.
struct AnyValue {
    template <typename Field>
    operator Field() const;  // NOLINT(google-explicit-constructor): it is there to be converted
};

// As many values as an aggregate takes: the number of its fields.
template <typename Record, typename... Values>
consteval size_t CountFields() {
    if constexpr (requires { Record{Values{}..., AnyValue{}}; })
        return CountFields<Record, Values..., AnyValue>();
    else
        return sizeof...(Values);
}

// The tests below walk the table, so it must have each of the record's fields under a key of its own.
TEST_F(FixedSettingsTest, EveryFieldHasAKeyOfItsOwn) {
    EXPECT_EQ(std::size(kKeys), CountFields<FixedSettings>());
    std::set<std::string> keys;
    std::set<const void*> fields;
    const FixedSettings settings;
    for (const FixedKey& key : kKeys) {
        keys.insert(key.key);
        std::visit([&](auto field) { fields.insert(&(settings.*field)); }, key.field);
    }
    EXPECT_EQ(keys.size(), std::size(kKeys));
    EXPECT_EQ(fields.size(), std::size(kKeys));
}

TEST_F(FixedSettingsTest, NewRecordHoldsTheDefaults) { ExpectDefaults(FixedSettings()); }

TEST_F(FixedSettingsTest, EveryFieldComesFromItsOwnKey) {
    FixedSettings settings;
    Read(SectionWithEveryKey(), settings);
    ExpectWrittenValues(settings);
}

TEST_F(FixedSettingsTest, SectionWithoutTheKeysGivesTheDefaultsInAUsedRecord) {
    FixedSettings settings;
    Read(SectionWithEveryKey(), settings);
    Read("[Molar]\r\nUNRELATED=1\r\n[Other]\r\nBITSTORED=3\r\n", settings);
    ExpectDefaults(settings);
}

TEST_F(FixedSettingsTest, MissingSectionOrFileGivesTheDefaultsInAUsedRecord) {
    FixedSettings settings;
    Read(SectionWithEveryKey(), settings);
    Read(SectionWithEveryKey(), settings, L"Missing");
    ExpectDefaults(settings);
    Read(SectionWithEveryKey(), settings);
    Read("", settings);
    ExpectDefaults(settings);
    Read(SectionWithEveryKey(), settings);
    ReadFixedSettings(Folder().Wide(L"missing.ini"), L"Molar", settings);
    ExpectDefaults(settings);
}

// A position in front makes a key of the other chain.
TEST_F(FixedSettingsTest, KeysStandWithoutAPosition) {
    FixedSettings settings;
    Read("[Molar]\r\n00_BLOCK_SIZE=8\r\n00_MAX_SLOPE=7.5\r\n", settings);
    ExpectDefaults(settings);
}

TEST_F(FixedSettingsTest, CorrectSpellingOfTheMisspelledKeyIsNoKey) {
    FixedSettings settings;
    Read("[Molar]\r\nENHANCED_RATIO_CONTRAST=7.5\r\n", settings);
    EXPECT_EQ(settings.ENAHCNED_RATIO_CONTRAST, 2.0);
}

TEST_F(FixedSettingsTest, ValuesThatAreNoNumbersAreZero) {
    FixedSettings settings;
    Read("[Molar]\r\nBLOCK_SIZE=large\r\nHISTO_BINS=-12x\r\nMAX_SLOPE=\r\nGAUSSIAN_SIZE=wide\r\n", settings);
    EXPECT_EQ(settings.BLOCK_SIZE, 0);
    EXPECT_EQ(settings.HISTO_BINS, -12);
    EXPECT_EQ(settings.MAX_SLOPE, 0.0);
    EXPECT_EQ(settings.GAUSSIAN_SIZE, 0.0);
}

}  // namespace
}  // namespace vastrelline
