// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/ProfileText.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

std::wstring ReadText(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                      const wchar_t* defaultValue = L"dflt", uint32_t size = 261) {
    std::vector<wchar_t> buffer(size, L'#');
    const uint32_t count = ReadProfileTextString(profile, section, key, defaultValue, buffer.data(), size);
    EXPECT_EQ(buffer[count], L'\0');
    return {buffer.data(), count};
}

// The whole buffer of a list call, each terminator shown as '|'.
std::wstring ListBuffer(const ProfileText& profile, const wchar_t* section, uint32_t size) {
    std::vector<wchar_t> buffer(size, L'#');
    ReadProfileTextSection(profile, section, buffer.data(), size);
    std::wstring shown(buffer.begin(), buffer.end());
    for (wchar_t& character : shown)
        if (character == L'\0') character = L'|';
    return shown;
}

struct TextCase {
    const char* name;
    std::string bytes;
    std::wstring value;  // of [a] k, default "dflt"
};

class ProfileTextValueTest : public testing::TestWithParam<TextCase> {};

TEST_P(ProfileTextValueTest, ReadsOneKey) {
    EXPECT_EQ(ReadText(ProfileText(GetParam().bytes), L"a", L"k"), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ProfileTextValueTest,
    testing::Values(TextCase{"EmptyFile", "", L"dflt"}, TextCase{"Plain", "[a]\r\nk=v\r\n", L"v"},
                    TextCase{"Empty", "[a]\r\nk=\r\n", L""}, TextCase{"BlanksOnly", "[a]\r\nk= \t\r\n", L""},
                    TextCase{"SecondEquals", "[a]\nk=v=w\n", L"v=w"}, TextCase{"NoLineEnd", "[a]\nk=v", L"v"},
                    TextCase{"CarriageReturnAlone", "[a]\rk=v\rm=1", L"v"},
                    TextCase{"NoEqualsHidesTheNext", "[a]\nk\nk=v\n", L"dflt"},
                    TextCase{"QuotesWithOneCharacter", "[a]\nk=\"\n", L"\""},
                    TextCase{"QuotesDoNotMatch", "[a]\nk=\"v'\n", L"\"v'"},
                    TextCase{"OnePairOfQuotesOnly", "[a]\nk=\"\"v\"\"\n", L"\"v\""},
                    TextCase{"EndOfFileCharacter", "[a]\nk=v\x1A", L"v"},
                    TextCase{"BlanksInTheBrackets", "[ a\t]\nk=v\n", L"v"},
                    TextCase{"TextBehindTheBracket", "[a] note\nk=v\n", L"v"},
                    TextCase{"HeadWithoutBracketIsALine", "[a]\n[b\nk=v\n", L"v"},
                    TextCase{"CommentedHead", ";[a]\nk=v\n", L"dflt"},
                    TextCase{"OtherSectionFirst", "[b]\nk=w\n[a]\nk=v\n", L"v"},
                    TextCase{"NextSectionEnds", "[a]\n[b]\nk=w\n", L"dflt"},
                    TextCase{"ZeroByteEndsTheText", "[a]\nk=v\0w\n"s, L"v"},
                    TextCase{"ZeroByteBeforeIsHarmless", "\0\0\n[a]\nk=v\n"s, L"v"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Encodings, ProfileTextValueTest,
    testing::Values(TextCase{"Utf8", "[a]\nk=\xC3\xA9\xE6\xBC\xA2\n", L"\u00E9\u6F22"},
                    TextCase{"InvalidBytesEscape", "[a]\nk=\xE9t\xFF\n", {0xDCE9, L't', 0xDCFF}},
                    TextCase{"Utf8Mark", "\xEF\xBB\xBF[a]\nk=\xC3\xA9\n", L"\u00E9"},
                    TextCase{"Utf16Le", "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x3D\xD8\0\xDE\n\0"s, L"\U0001F600"},
                    TextCase{"Utf16LeOddEnd", "\xFF\xFE[\0a\0]\0\n\0k\0=\0v\0x"s, L"v"},
                    TextCase{"Utf16Be", "\xFE\xFF\0[\0a\0]\0\n\0k\0=\x6F\x22"s, L"\u6F22"},
                    TextCase{"MarkOnly", "\xFF\xFE", L"dflt"},
                    TextCase{"MarkAndHalfAUnit", "\xFF\xFE[", L"dflt"},
                    TextCase{"Utf16WithoutMark", "[\0a\0]\0\n\0k\0=\0v\0"s, L"dflt"}),
    [](const auto& test) { return test.param.name; });

TEST(ProfileText, LineFeedInsideAUtf16CharacterEndsNoLine) {
    // U+0A0D and U+0D0A hold the bytes of line ends, U+3D5B those of '[' and '='.
    const std::string bytes = "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x0D\x0A\x0A\x0D\x5B\x3D"s;
    EXPECT_EQ(ReadText(ProfileText(bytes), L"a", L"k"), L"\u0A0D\u0D0A\u3D5B");
}

TEST(ProfileText, NamesMatchWithoutCaseAlsoBeyondAscii) {
    const ProfileText profile("[\xC3\x84rm]\n\xD0\x96=1\n");  // A with diaeresis; Cyrillic Zhe
    EXPECT_EQ(ReadText(profile, L"\u00E4RM", L"\u0436"), L"1");
    EXPECT_EQ(ReadText(profile, L"arm", L"\u0436"), L"dflt");
}

TEST(ProfileText, NameArgumentsLoseTheirBlanksExceptInSectionLists) {
    const ProfileText profile("[a]\nk=1\n");
    EXPECT_EQ(ReadText(profile, L" a\t", L" k "), L"1");
    EXPECT_EQ(ReadProfileTextInt(profile, L" a", L"k ", 7), 1);
    EXPECT_EQ(ListBuffer(profile, L" a", 4), L"||##");
}

TEST(ProfileText, LinesBeforeTheFirstHeadAreTheEmptySection) {
    const ProfileText profile("k=0\n[]\nk=2\n[a]\nk=1\n");
    EXPECT_EQ(ReadText(profile, L"", L"k"), L"0");
    EXPECT_EQ(ReadText(profile, L"a", L"k"), L"1");
}

TEST(ProfileText, DefaultTextsLoseTrailingBlanksOnly) {
    const ProfileText profile("");
    EXPECT_EQ(ReadText(profile, L"a", L"k", L" d e  "), L" d e");
    EXPECT_EQ(ReadText(profile, L"a", L"k", L"  "), L"");
    EXPECT_EQ(ReadText(profile, L"a", L"k", nullptr), L"");
    EXPECT_EQ(ReadText(profile, L"a", L"k", L"defgh", 4), L"def");
}

TEST(ProfileText, BuffersOfAnySizeAreSafe) {
    const ProfileText profile("[a]\nk=0123456789\n");
    wchar_t guard = L'#';
    EXPECT_EQ(ReadProfileTextString(profile, L"a", L"k", L"", &guard, 0), 0U);
    EXPECT_EQ(ReadProfileTextSection(profile, L"a", &guard, 0), 0U);
    EXPECT_EQ(ReadProfileTextString(profile, L"a", L"k", L"", nullptr, 9), 0U);
    EXPECT_EQ(ReadProfileTextSection(profile, L"a", nullptr, 9), 0U);
    EXPECT_EQ(guard, L'#');
    EXPECT_EQ(ReadText(profile, L"a", L"k", L"", 1), L"");
    EXPECT_EQ(ReadText(profile, L"a", L"k", L"", 2), L"0");
    EXPECT_EQ(ReadText(profile, L"a", L"k", L"", 11), L"0123456789");
}

TEST(ProfileText, ListsAreCutToTwoLessThanTheBuffer) {
    const ProfileText profile("[a]\nk=1\nlm=23\n");  // "k=1|lm=23||": 11 characters
    EXPECT_EQ(ListBuffer(profile, L"a", 12), L"k=1|lm=23||#");
    EXPECT_EQ(ListBuffer(profile, L"a", 11), L"k=1|lm=23||");
    EXPECT_EQ(ListBuffer(profile, L"a", 10), L"k=1|lm=2||");
    EXPECT_EQ(ListBuffer(profile, L"a", 6), L"k=1|||");
    EXPECT_EQ(ListBuffer(profile, L"a", 5), L"k=1||");
    EXPECT_EQ(ListBuffer(profile, L"a", 3), L"k||");
    EXPECT_EQ(ListBuffer(profile, L"a", 2), L"||");
    EXPECT_EQ(ListBuffer(profile, L"a", 1), L"|");
    EXPECT_EQ(ReadProfileTextSection(profile, nullptr, nullptr, 0), 0U);
}

TEST(ProfileText, ListsLeaveOutCommentsBlankLinesAndWhatAZeroByteHides) {
    const ProfileText profile("[a]\n ;c=1\n\n \t\nk = 1 \nword\n=x\nz=1\0y\n\0q=1\n#c\n"s);
    EXPECT_EQ(ListBuffer(profile, L"a", 28), L"k=1|word|=x|z=1|#c||########");
}

TEST(ProfileText, NullNamesListSectionsAndKeys) {
    const ProfileText profile("x=1\n[a]\nk=1\n=2\nword\n;c\n[b]\n[]\n[A]\n");
    EXPECT_EQ(ReadText(profile, nullptr, L"k"), L"a\0b\0A\0"s);
    EXPECT_EQ(ReadText(profile, L"A", nullptr), L"k\0word\0"s);
    EXPECT_EQ(ReadText(profile, L"c", nullptr), L"");
    EXPECT_EQ(ReadProfileTextInt(profile, nullptr, L"k", 5), 5);
    EXPECT_EQ(ReadProfileTextInt(profile, L"a", nullptr, 5), 5);
}

struct IntCase {
    const char* name;
    std::string value;
    int32_t number;
};

class ProfileTextIntTest : public testing::TestWithParam<IntCase> {};

TEST_P(ProfileTextIntTest, ReadsTheLeadingDigits) {
    const ProfileText profile("[a]\nk=" + GetParam().value + "\n");
    EXPECT_EQ(ReadProfileTextInt(profile, L"a", L"k", 77), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, ProfileTextIntTest,
    testing::Values(IntCase{"Plain", "42", 42}, IntCase{"Empty", "", 0}, IntCase{"Word", "abc", 0},
                    IntCase{"Plus", "+5", 0}, IntCase{"Hexadecimal", "0x10", 0},
                    IntCase{"OctalPrefix", "0o17", 0}, IntCase{"Minus", "-7", -7},
                    IntCase{"MinusBlank", "- 7", 0}, IntCase{"MinusOnly", "-", 0},
                    IntCase{"LeadingZeros", "010", 10}, IntCase{"Fraction", "3.9", 3},
                    IntCase{"Exponent", "1e3", 1}, IntCase{"Quoted", "\" 12\"", 12},
                    IntCase{"Smallest", "-2147483648", std::numeric_limits<int32_t>::min()},
                    IntCase{"WrapsBelow", "-2147483649", 2147483647}, IntCase{"WrapsAbove", "4294967295", -1},
                    IntCase{"WrapsAll", "18446744073709551617", 1},  // 2^64 + 1
                    IntCase{"Comment", "5 ; note", 5}),
    [](const auto& test) { return test.param.name; });

TEST(ProfileText, AKeyWithoutEqualsSignHasNoNumber) {
    EXPECT_EQ(ReadProfileTextInt(ProfileText("[a]\nk\n"), L"a", L"k", 9), 9);
}

TEST(ProfileText, LongLinesAndManyLinesAreRead) {
    std::string bytes = "[a]\nlong=" + std::string(1'000'000, 'x') + "\n";
    for (int i = 0; i < 100'000; ++i) bytes += "key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    const ProfileText profile(bytes);
    EXPECT_EQ(ReadProfileTextInt(profile, L"a", L"key99999", 0), 99999);
    EXPECT_EQ(ReadText(profile, L"a", L"long"), std::wstring(260, L'x'));
}

// The plain way to find a value: line by line, the first head and the first key that match.
std::wstring FindLineByLine(const ProfileText& profile, std::wstring_view section, std::wstring_view key) {
    bool isInside = section.empty();
    ProfileLineReader lines = profile.Lines({profile.Encoding().MarkSize(), profile.Bytes().size()});
    while (const std::optional<ProfileLine> line = lines.Next()) {
        if (line->kind == LineKind::Head) {
            if (isInside) break;
            isInside = profile.IsNamed(line->name, section);
        } else if (isInside && line->kind == LineKind::Entry && profile.IsNamed(line->name, key)) {
            return line->hasValue ? profile.Decode(line->value) : L"none";
        }
    }
    return L"none";
}

TEST(ProfileText, FindsWhatASearchLineByLineFinds) {
    std::mt19937 random(7);
    const auto pick = [&](const std::vector<std::string>& parts) { return parts[random() % parts.size()]; };
    const std::vector<std::string> names = {"a",    "A", "b",  "\xC3\xA4", "\xC3\x84",
                                            "\xFF", "",  "ab", "k1",       "K1"};
    for (int i = 0; i < 300; ++i) {
        std::string bytes;
        for (int line = 0; line < 40; ++line) {
            const bool isHead = random() % 4 == 0;
            bytes += isHead
                         ? "[" + pick(names) + "]"
                         : pick({"", " ", ";"}) + pick(names) + pick({"=", " = ", ""}) + std::to_string(line);
            bytes += pick({"\n", "\r\n", "\r", "\n\n"});
        }
        const ProfileText profile(bytes);
        for (const std::string& section : names) {
            for (const std::string& key : names) {
                const std::wstring wideSection = DecodeUtf8(section);
                const std::wstring wideKey = DecodeUtf8(key);
                EXPECT_EQ(profile.FindValue(wideSection, wideKey).value_or(L"none"),
                          FindLineByLine(profile, wideSection, wideKey))
                    << bytes << "\n[" << section << "] " << key;
            }
        }
    }
}

TEST(ProfileText, LinesLongerThanAStretchOfTheSearchEndWhereTheyEnd) {
    for (const size_t length : {size_t{250}, size_t{255}, size_t{256}, size_t{257}, size_t{600}}) {
        for (const std::string end : {"\n", "\r", "\r\n"}) {
            const ProfileText profile("[a]" + end + "k=" + std::string(length, 'x') + end + "m=1");
            EXPECT_EQ(profile.FindValue(L"a", L"k"), std::wstring(length, L'x'));
            EXPECT_EQ(profile.FindValue(L"a", L"m"), L"1");
        }
    }
}

// A search that went through the first line with every repetition would take minutes.
TEST(ProfileText, RepeatedNamesOfLongLinesAreNoMoreWork) {
    constexpr size_t kHalf = 4'000'000;
    std::string keys = "[a]\nA=" + std::string(kHalf, 'x') + "\n";
    std::string heads = "[a]" + std::string(kHalf, 'x') + "\nk=1\n";
    while (keys.size() < 2 * kHalf) keys += "A=\n";
    while (heads.size() < 2 * kHalf) heads += "[a]\n";
    EXPECT_EQ(ProfileText(keys).FindValue(L"a", L"A")->size(), kHalf);
    EXPECT_EQ(ProfileText(heads).FindValue(L"a", L"k"), L"1");
}

TEST(ProfileText, HasEntriesWhereItListsAny) {
    const ProfileText profile("[a]\nk=1\n[b]\n;k=1\n[c]\n\0=1\n[d]\n\0=1\nm\n"s);
    for (const wchar_t* section : {L"a", L"b", L"c", L"d", L"e", L""})
        EXPECT_EQ(profile.HasEntries(section), !profile.ListEntries(section).empty()) << section;
    EXPECT_TRUE(profile.HasEntries(L"a"));
    EXPECT_FALSE(profile.HasEntries(L"b"));
    EXPECT_FALSE(profile.HasEntries(L"c"));
    EXPECT_TRUE(profile.HasEntries(L"d"));
    EXPECT_FALSE(profile.HasEntries(L"e"));
}

}  // namespace
}  // namespace vastrelline
