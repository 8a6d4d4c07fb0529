// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "lint/Rules.h"
#include "profile/ValueReading.h"
#include "profile_text/Utf8.h"
#include "profile_text/ValueText.h"

namespace vastrelline {
namespace {

// A value that a run reads, and what it reads.
struct ReadLine {
    const LintedSection& section;
    const PlannedPlace& place;
    const PlannedKey& key;
    std::string written;
    ValueReading reading;

    size_t Offset() const { return key.entry->line.value.begin; }

    // "04_MAX_SLOPE=1,5"
    std::string Shown() const { return key.entry->key + "=" + ShownText(written); }
};

template <typename Use>
void ForEachValue(const LintedSection& section, const Use& use) {
    for (const PlannedPlace& place : section.plan.places) {
        for (const PlannedKey& key : place.keys) {
            if (key.entry == nullptr || !key.entry->HasValue()) continue;
            const std::optional<std::wstring> value = section.file->ValueOf(*key.entry);
            use(ReadLine{section, place, key, EncodeUtf8(*value),
                         ReadWritten(value, key.key->type, key.key->defaultText)});
        }
    }
}

bool IsNumber(const PlannedKey& key) {
    return key.key->type == KeyType::Number || key.key->type == KeyType::SingleNumber ||
           key.key->type == KeyType::CutNumber;
}

double NumberOf(const ReadValue& value) {
    if (const auto* const integer = std::get_if<int32_t>(&value)) return *integer;
    if (const auto* const single = std::get_if<float>(&value)) {
        // As it would be written, so that 0.3 is 0.3.
        return ParseDouble(DecodeUtf8(FormatReadValue(*single)));
    }
    const auto* const number = std::get_if<double>(&value);
    return number == nullptr ? 0.0 : *number;
}

std::string RangeHint(const PlannedKey& key) {
    return key.key->range.empty() ? std::string() : " (" + std::string(key.key->range) + ")";
}

// "1,5", alone in a value, is one and a half; "1,500" may be a thousand and a half.
bool IsPlainComma(std::string_view value) {
    const size_t comma = value.find(',');
    if (comma == std::string_view::npos || comma == 0) return false;
    const std::string_view whole = value.substr(value[0] == '-' ? 1 : 0, comma - (value[0] == '-' ? 1 : 0));
    const std::string_view fraction = value.substr(comma + 1);
    const auto areDigits = [](std::string_view text) {
        return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const bool mayBeThousands = fraction.size() == 3 && whole != "0";
    return areDigits(whole) && areDigits(fraction) && !mayBeThousands;
}

// The value of the key that a range depends on, as the same place reads it.
int32_t ConditionOf(const ReadLine& line, std::string_view name) {
    const auto& keys = line.place.keys;
    const auto found = std::find_if(
        keys.begin(), keys.end(), [&](const PlannedKey& key) { return IsSameKeyName(key.key->name, name); });
    if (found == keys.end()) {  // of another place of the same section, as INVERSE_INTENSITY
        return ReadIntegerKey(*line.section.file, line.section.section->name, name, 0);
    }
    std::optional<std::wstring> value;
    if (found->entry != nullptr) value = line.section.file->ValueOf(*found->entry);
    return static_cast<int32_t>(
        NumberOf(ReadWritten(value, found->key->type, found->key->defaultText).value));
}

// A range cannot be told while the key that it depends on is misspelt.
bool IsConditionUnknown(const SensibleRange& range, const ReadLine& line) {
    if (range.whenKey.empty()) return false;
    const std::string name = line.place.position ? NumberedKeyName(*line.place.position, range.whenKey)
                                                 : std::string(range.whenKey);
    return line.section.Find(name) == nullptr && line.section.HasMisspelt(name);
}

bool Holds(const SensibleRange& range, const ReadLine& line) {
    if (range.whenKey.empty()) return true;
    const int32_t value = ConditionOf(line, range.whenKey);
    return std::find(range.whenIs.begin(), range.whenIs.end(), value) != range.whenIs.end();
}

bool HasShape(ValueShape shape, double value) {
    constexpr double kLargest = 1 << 30;
    const auto whole = static_cast<int64_t>(std::clamp(value, -kLargest, kLargest));
    switch (shape) {
        case ValueShape::Any:
            return true;
        case ValueShape::Odd:
            return whole % 2 != 0;
        case ValueShape::Even:
            return whole % 2 == 0;
        case ValueShape::PowerOfTwo:
            return whole > 0 && (whole & (whole - 1)) == 0;
        case ValueShape::NotZero:
            break;
    }
    return value != 0.0;
}

enum class Verdict : uint8_t { Sensible, Outside, Even };

Verdict Judge(const ReadLine& line) {
    if (line.reading.slip != ReadingSlip::None || !line.key.key->hasEffect || !line.place.runs)
        return Verdict::Sensible;
    const double value = NumberOf(line.reading.value);
    bool isAny = false;
    bool isWindow = false;
    for (const SensibleRange& range : line.key.key->sensible) {
        if (IsConditionUnknown(range, line)) return Verdict::Sensible;
        if (!Holds(range, line)) continue;
        isAny = true;
        const bool isWithin = value >= range.smallest && value <= range.largest;
        if (isWithin && HasShape(range.shape, value)) return Verdict::Sensible;
        isWindow = isWindow || range.shape == ValueShape::Odd;
    }
    if (!isAny) return Verdict::Sensible;
    return isWindow && HasShape(ValueShape::Even, value) ? Verdict::Even : Verdict::Outside;
}

}  // namespace

void FindDecimalCommas(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (line.reading.slip != ReadingSlip::DecimalComma) return;
        std::string mended = line.written;
        std::replace(mended.begin(), mended.end(), ',', '.');
        std::optional<LintFix> fix;
        if (IsNumber(line.key) && IsPlainComma(line.written))
            fix = LintFix{line.key.entry->line.value,
                          section.file->Text().Encoding().Encode(DecodeUtf8(mended)), "write " + mended};
        const std::string remedy = line.key.key->type == KeyType::Integer ? "write a whole number"
                                   : fix                                  ? "write " + mended
                                                                          : "write a decimal point";
        sink.Add(line.Offset(),
                 line.Shown() + " is read as " + FormatReadValue(line.reading.value) + "; " + remedy,
                 std::move(fix));
    });
}

void FindTextInNumbers(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        const std::string readAs = " and read as " + FormatReadValue(line.reading.value);
        switch (line.reading.slip) {
            case ReadingSlip::NoValue:
                sink.Add(line.Offset(), line.key.entry->key + " is empty" + readAs + "; give a number" +
                                            RangeHint(line.key) + " or take the line away (" +
                                            std::string(line.key.key->defaultText) + ")");
                break;
            case ReadingSlip::NoNumber:
                sink.Add(line.Offset(),
                         line.Shown() + " is no number" + readAs + "; give one" + RangeHint(line.key));
                break;
            case ReadingSlip::TextBehind:
                sink.Add(line.Offset(), line.Shown() + " is read as " + FormatReadValue(line.reading.value) +
                                            (line.written.find(';') == std::string::npos
                                                 ? "; take away what stands behind the number"
                                                 : "; a comment needs a line of its own"));
                break;
            case ReadingSlip::NotFinite:
                sink.Add(line.Offset(),
                         line.Shown() + " is no finite number; give one" + RangeHint(line.key));
                break;
            default:
                break;
        }
    });
}

void FindFractionsInIntegers(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (line.reading.slip != ReadingSlip::Fraction) return;
        sink.Add(line.Offset(), line.Shown() + " is read as " + FormatReadValue(line.reading.value) +
                                    "; write a whole number");
    });
}

void FindNumbersOutOfReach(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (line.reading.slip != ReadingSlip::Wrapped && line.reading.slip != ReadingSlip::TooSmall) return;
        sink.Add(line.Offset(), line.Shown() + " is too " +
                                    (line.reading.slip == ReadingSlip::Wrapped ? "large" : "small") +
                                    " and read as " + FormatReadValue(line.reading.value) +
                                    "; give a number" + RangeHint(line.key));
    });
}

void FindCutValues(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (line.reading.slip != ReadingSlip::TooLong) return;
        sink.Add(line.Offset(),
                 "the value of " + line.key.entry->key + " is read to its 260th character only; shorten it");
    });
}

void FindEvenWindows(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (Judge(line) != Verdict::Even) return;
        sink.Add(line.Offset(), line.Shown() + " is even; take an odd number" + RangeHint(line.key));
    });
}

void FindSenselessValues(const LintedSection& section, FindingSink& sink) {
    ForEachValue(section, [&](const ReadLine& line) {
        if (Judge(line) != Verdict::Outside) return;
        sink.Add(line.Offset(),
                 line.Shown() + " is outside the sensible range; take " + std::string(line.key.key->range));
    });
}

}  // namespace vastrelline
