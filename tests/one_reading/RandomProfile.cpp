// SPDX-License-Identifier: Apache-2.0
#include "RandomProfile.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "keys/KeyTable.h"
#include "profile/SectionPlan.h"
#include "profile_text/Utf8.h"

namespace vastrelline {

namespace {

using Random = std::mt19937;

uint32_t Below(Random& random, uint32_t limit) {
    return static_cast<uint32_t>(random() % limit);  // plain, so that all standard libraries agree
}

bool OneIn(Random& random, uint32_t chances) { return Below(random, chances) == 0; }

template <typename List>
auto PickFrom(Random& random, const List& list) {
    return list[Below(random, static_cast<uint32_t>(std::size(list)))];
}

std::string AnyCase(Random& random, std::string_view name) {
    std::string text(name);
    if (!OneIn(random, 3)) return text;
    for (char& letter : text)
        if (OneIn(random, 2) && letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

std::string Blanks(Random& random) {
    static constexpr std::array<std::string_view, 8> kBlanks = {"", "", "", "", " ", "\t", "  ", "\v \x1A"};
    return std::string(PickFrom(random, kBlanks));
}

std::string OddValue(Random& random) {
    static const std::vector<std::string> kOdd = {"",
                                                  "abc",
                                                  "1,5",
                                                  "0,25",
                                                  "1.5.2",
                                                  "0x10",
                                                  "-0x1.8p3",
                                                  "1e999",
                                                  "-1e999",
                                                  "1e-400",
                                                  "inf",
                                                  "-nan",
                                                  "nan(7)",
                                                  "4294967298",
                                                  "99999999999999999999",
                                                  "-2147483649",
                                                  "2147483648",
                                                  "-",
                                                  "+4",
                                                  "- 5",
                                                  ".5",
                                                  "5.",
                                                  ".",
                                                  "1e",
                                                  "1e+",
                                                  "2E2",
                                                  "12abc",
                                                  "5 ; comment",
                                                  "5;comment",
                                                  "\"7\"",
                                                  "'2.5'",
                                                  "\"\"",
                                                  "\"3",
                                                  "'4\"",
                                                  "\" 6 \"",
                                                  "''8''",
                                                  "3=4",
                                                  "[x]",
                                                  "\xC3\xA4\xC3\xB6",
                                                  "\xE2\x82\xAC"
                                                  "9",
                                                  "\xF0\x9F\x98\x80",
                                                  "\xFF\xFE",
                                                  "1\xC2\xA0",
                                                  "0.30000000000000004",
                                                  "1.00000000000000011102230246251565404236316680908203125",
                                                  "3.4e38",
                                                  "3.5e38",
                                                  "1e-46",
                                                  "-0",
                                                  "-0.0",
                                                  "0.0000001",
                                                  "1e22",
                                                  "true",
                                                  "2147483647.9",
                                                  "-2147483648.9",
                                                  "2147483648.5"};
    const uint32_t kind = Below(random, 24);
    if (kind == 0) return std::string(Below(random, 600), OneIn(random, 2) ? '0' : '7') + "5";
    if (kind == 1) return "\"" + std::string(250 + Below(random, 20), 'x') + " y\"";
    if (kind == 2) return std::string(200 + Below(random, 80), ' ') + std::string("1") + std::string(70, '4');
    if (kind == 3)
        return std::string(
            "12\0"
            "34",
            5);
    return PickFrom(random, kOdd);
}

std::string Value(Random& random) {
    if (OneIn(random, 3)) return OddValue(random);
    if (OneIn(random, 2)) return std::to_string(static_cast<int32_t>(Below(random, 300)) - 50);
    return std::to_string(static_cast<double>(Below(random, 100000)) / 1024.0);
}

std::string Entry(Random& random, const std::string& key, const std::string& value) {
    if (OneIn(random, 60)) return Blanks(random) + key;  // no equals sign
    return Blanks(random) + AnyCase(random, key) + Blanks(random) + "=" + Blanks(random) + value +
           Blanks(random);
}

class Writer {
public:
    explicit Writer(Random& random) : random_(random) {
        static constexpr std::array<std::string_view, 4> kEnds = {"\n", "\r\n", "\r", "\n"};
        end_ = PickFrom(random_, kEnds);
    }

    void Line(const std::string& text) { text_ += text + end_; }

    // One line of a key, now and then two of them or none.
    void Key(const std::string& key, const std::string& value) {
        if (OneIn(random_, 20)) return;
        Line(Entry(random_, key, value));
        if (OneIn(random_, 20)) Line(Entry(random_, key, Value(random_)));
        if (OneIn(random_, 15)) Line(OneIn(random_, 2) ? "; a comment" : "");
    }

    void Head(const std::string& name) {
        const std::string behind = OneIn(random_, 8) ? " behind" : "";
        Line(Blanks(random_) + "[" + Blanks(random_) + AnyCase(random_, name) + Blanks(random_) + "]" +
             behind);
    }

    void Settings(SettingsGroup group) {
        for (const vastrelline::Key& key : SettingsOf(group).keys)
            if (OneIn(random_, 2)) Key(std::string(key.name), Value(random_));
    }

    // FunctionCount and positions that more or less go with it.
    void StageList() {
        static const std::vector<std::string> kCounts = {"0",   "-1",   "3.9",       "2000000000",
                                                         "abc", "1001", "5000000000"};
        const uint32_t length = Below(random_, 8);
        const uint32_t count = length + Below(random_, 3);
        Key("FunctionCount", OneIn(random_, 6) ? PickFrom(random_, kCounts) : std::to_string(count));
        for (uint32_t i = 0; i < length; ++i) {
            static constexpr std::array<int32_t, 7> kFar = {99, 100, 101, 999, 1000, 123456, 1999999999};
            StageAt(OneIn(random_, 12) ? PickFrom(random_, kFar) : static_cast<int32_t>(i));
        }
    }

    void StageAt(int32_t position) {
        const auto number = static_cast<int32_t>(Below(random_, 15));
        const std::string numberText = OneIn(random_, 15) ? Value(random_) : std::to_string(number);
        Key(NumberedKeyName(position, kListNumberKey), numberText);
        Keys(position, number);
        if (OneIn(random_, 10)) Keys(position, static_cast<int32_t>(Below(random_, 15)));
    }

    void Keys(int32_t position, int32_t number) {
        const Stage* const stage = FindStage(number);
        if (stage == nullptr) return;
        for (const vastrelline::Key& key : stage->keys)
            if (!OneIn(random_, 3)) Key(NumberedKeyName(position, key.name), Value(random_));
    }

    std::string Take() { return std::move(text_); }

private:
    Random& random_;
    std::string end_;
    std::string text_;
};

void WriteSection(Random& random, Writer& writer) {
    static const std::vector<std::string> kModes = {"2",     "3",   "2", "3",         "1",
                                                    "\"2\"", "2,5", "x", "4294967299"};
    if (!OneIn(random, 8)) writer.Key("PROCMODE", PickFrom(random, kModes));
    writer.Settings(SettingsGroup::Common);
    if (OneIn(random, 2)) writer.Settings(SettingsGroup::Fixed);
    writer.StageList();
}

void WriteLowSection(Writer& writer) {
    writer.Settings(SettingsGroup::Common);
    int32_t position = 0;
    for (const int32_t number : LowSequence()) writer.Keys(position++, number);
}

std::string Utf16(std::string_view utf8, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    const auto append = [&](uint32_t unit) {
        const auto low = static_cast<char>(unit & 0xFFU);
        const auto high = static_cast<char>(unit >> 8U & 0xFFU);
        bytes.push_back(isBigEndian ? high : low);
        bytes.push_back(isBigEndian ? low : high);
    };
    for (const wchar_t character : DecodeUtf8(utf8)) {
        const auto value = static_cast<uint32_t>(character);
        if (value < 0x10000) {
            append(value);
            continue;
        }
        append(0xD800 + (value - 0x10000) / 0x400);
        append(0xDC00 + (value - 0x10000) % 0x400);
    }
    return bytes;
}

std::string Encoded(Random& random, std::string utf8) {
    const uint32_t kind = Below(random, 8);
    if (kind == 0) return Utf16(utf8, false);
    if (kind == 1) return Utf16(utf8, true) + (OneIn(random, 4) ? "x" : "");
    if (kind == 2) return "\xEF\xBB\xBF" + utf8;
    return utf8;
}

}  // namespace

RandomProfile MakeRandomProfile(std::mt19937& random) {
    static const std::vector<std::string> kNames = {"General",  "a]b", "\xC3\x84rzte", "IP_LOWMODE",
                                                    "Settings", "",    "With blank"};
    Writer writer(random);
    if (OneIn(random, 4)) WriteSection(random, writer);  // before the first head
    RandomProfile profile;
    profile.sections = {"General", "Missing", "IP_LOWMODE", "Settings", "a]b", "\xC3\xA4RZTE"};
    const uint32_t count = 1 + Below(random, 5);
    for (uint32_t i = 0; i < count; ++i) {
        const std::string name = i == 0 ? "General" : PickFrom(random, kNames);
        writer.Head(name);
        if (name == kSensorSectionName && !OneIn(random, 4))
            writer.Settings(SettingsGroup::Sensor);
        else if (name == kLowSectionName && !OneIn(random, 4))
            WriteLowSection(writer);
        else if (!OneIn(random, 10))
            WriteSection(random, writer);
    }
    profile.bytes = Encoded(random, writer.Take());
    return profile;
}

}  // namespace vastrelline
