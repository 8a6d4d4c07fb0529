// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "profile_text/ProfileEdit.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

struct EditCase {
    const char* name;
    std::string before;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
    std::string after;
};

class EditProfileTest : public testing::TestWithParam<EditCase> {};

TEST_P(EditProfileTest, ChangesTheOneLine) {
    const EditCase& edit = GetParam();
    std::string bytes = edit.before;
    const ProfileEditResult expected =
        edit.before == edit.after ? ProfileEditResult::Unchanged : ProfileEditResult::Changed;
    EXPECT_EQ(EditProfile(bytes, edit.section, edit.key, edit.value), expected);
    EXPECT_EQ(bytes, edit.after);
    // The same again changes nothing more.
    EXPECT_EQ(EditProfile(bytes, edit.section, edit.key, edit.value), ProfileEditResult::Unchanged);
    EXPECT_EQ(bytes, edit.after);
}

INSTANTIATE_TEST_SUITE_P(
    Replacing, EditProfileTest,
    testing::Values(
        EditCase{"Value", "[a]\r\nk=1\r\nm=2\r\n", L"a", L"k", L"99", "[a]\r\nk=99\r\nm=2\r\n"},
        EditCase{"OtherLinesByteForByte",
                 "; x \n\n [A] \r\n j = 0\t\r\n\tk =\t1 \r\n\xFF\xC3=\xE9\n\n[b]\nk=3", L"a", L"K", L"-5",
                 "; x \n\n [A] \r\n j = 0\t\r\n\tk =\t-5 \r\n\xFF\xC3=\xE9\n\n[b]\nk=3"},
        EditCase{"SameValue", "[a]\n k = 1 \n", L"a", L"k", L"1", "[a]\n k = 1 \n"},
        EditCase{"FirstOfTwo", "[a]\nk=1\nk=2\n", L"a", L"k", L"9", "[a]\nk=9\nk=2\n"},
        EditCase{"LastLineWithoutEnd", "[a]\nk=1", L"a", L"k", L"99", "[a]\nk=99"},
        EditCase{"CommentBehindGoes", "[a]\nk=1 ; note\n", L"a", L"k", L"2", "[a]\nk=2\n"},
        EditCase{"EmptyByText", "[a]\nk=\n", L"a", L"k", L"v", "[a]\nk=v\n"},
        EditCase{"TextByEmpty", "[a]\nk=v\n", L"a", L"k", L"", "[a]\nk=\n"},
        EditCase{"WithoutEqualsSign", "[a]\nk \nm=1\n", L"a", L"k", L"2", "[a]\nk=2 \nm=1\n"},
        EditCase{"WithoutEqualsSignByBlanks", "[a]\nk \nm=1\n", L"a", L"k", L" v ", "[a]\nk= v \nm=1\n"},
        EditCase{"BlanksOfTheValueStay", "[a]\nk=1\n", L"a", L"k", L"  v  ", "[a]\nk=  v  \n"},
        EditCase{"BlanksOfTheValueAreNoneMore", "[a]\nk =  1 \n", L"a", L"k", L" v ", "[a]\nk = v \n"},
        EditCase{"QuotesAreWritten", "[a]\nk=v\n", L"a", L"k", L"\"v\"", "[a]\nk=\"v\"\n"},
        EditCase{"InvalidBytesOfAnArgument", "[a]\nk=1\n", L"a", L"k", L"x\xDCE9", "[a]\nk=x\xE9\n"},
        EditCase{"Utf16", "\xFF\xFE[\0a\0]\0\n\0k\0=\0v\0\n\0z"s, L"a", L"k", L"\U0001F600",
                 "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x3D\xD8\0\xDE\n\0z"s},
        EditCase{"BracketInAValue", "[a]\nk=1\n", L"a", L"k", L"[b]", "[a]\nk=[b]\n"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Adding, EditProfileTest,
    testing::Values(
        EditCase{"ToNothing", "", L"a", L"k", L"1", "[a]\r\nk=1\r\n"},
        EditCase{"BehindTheLastLine", "[a]\r\nk=1\r\n[b]\r\n", L"a", L"n", L"5",
                 "[a]\r\nk=1\r\nn=5\r\n[b]\r\n"},
        EditCase{"BeforeBlankLines", "[a]\nk=1\n\n \n[b]\n", L"a", L"n", L"5", "[a]\nk=1\nn=5\n\n \n[b]\n"},
        EditCase{"BehindAComment", "[a]\nk=1\n;c\n\n[b]\n", L"a", L"n", L"5", "[a]\nk=1\n;c\nn=5\n\n[b]\n"},
        EditCase{"BehindTheHead", "[a]\n[b]\n", L"a", L"n", L"5", "[a]\nn=5\n[b]\n"},
        EditCase{"MissingLineEndFirst", "[a]\r\nk=1", L"a", L"n", L"5", "[a]\r\nk=1\r\nn=5\r\n"},
        EditCase{"MissingLineEndOfAHead", "[a]", L"a", L"n", L"5", "[a]\r\nn=5\r\n"},
        EditCase{"FirstOfTwoSections", "[a]\nk=1\n[a]\nn=2\n", L"a", L"n", L"5", "[a]\nk=1\nn=5\n[a]\nn=2\n"},
        EditCase{"NewSection", "[b]\r\nx=1\r\n", L"a", L"k", L"1", "[b]\r\nx=1\r\n[a]\r\nk=1\r\n"},
        EditCase{"NewSectionBehindBlankLines", "[b]\n\n", L"a", L"k", L"1", "[b]\n\n[a]\nk=1\n"},
        EditCase{"NewSectionMissingLineEnd", "x=1", L"a", L"k", L"1", "x=1\r\n[a]\r\nk=1\r\n"},
        EditCase{"LineFeedsAreKept", "[b]\nx=1", L"a", L"k", L"1", "[b]\nx=1\n[a]\nk=1\n"},
        EditCase{"BehindUtf8Mark", "\xEF\xBB\xBF", L"a", L"k", L"\u00E9",
                 "\xEF\xBB\xBF[a]\r\nk=\xC3\xA9\r\n"},
        EditCase{"BehindUtf16Mark", "\xFF\xFE", L"a", L"k", L"1",
                 "\xFF\xFE[\0a\0]\0\r\0\n\0k\0=\0"
                 "1\0\r\0\n\0"s},
        EditCase{"BeforeTheOddByteOfUtf16", "\xFF\xFE[\0a\0]\0x"s, L"a", L"k", L"1",
                 "\xFF\xFE[\0a\0]\0\r\0\n\0k\0=\0"
                 "1\0\r\0\n\0x"s},
        EditCase{"EmptySectionName", "[a]\nk=1\n", L"", L"k", L"2", "k=2\n[a]\nk=1\n"},
        EditCase{"NamesLoseTheirBlanks", "[a]\nk=1\n", L" a ", L" n ", L"2", "[a]\nk=1\nn=2\n"},
        EditCase{"BracketsInAName", "[b]\n", L"a]x", L"k[1]", L"1", "[b]\n[a]x]\nk[1]=1\n"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Deleting, EditProfileTest,
    testing::Values(EditCase{"Key", "[a]\nj=0\nk=1\nm=2\n", L"a", L"k", nullptr, "[a]\nj=0\nm=2\n"},
                    EditCase{"MissingKey", "[a]\nj=0\n", L"a", L"k", nullptr, "[a]\nj=0\n"},
                    EditCase{"KeyOfMissingSection", "[a]\nk=0\n", L"b", L"k", nullptr, "[a]\nk=0\n"},
                    EditCase{"Section", "[a]\nk=1\n\n[b]\nx=1\n;c\n\n[c]\ny=1\n", L"B", nullptr, nullptr,
                             "[a]\nk=1\n\n[c]\ny=1\n"},
                    EditCase{"LastSection", "[a]\nk=1\n[b]\nx=1", L"b", nullptr, L"ignored", "[a]\nk=1\n"},
                    EditCase{"MissingSection", "[a]\nk=1\n", L"b", nullptr, nullptr, "[a]\nk=1\n"},
                    EditCase{"NothingOfNothing", "", L"a", nullptr, nullptr, ""}),
    [](const auto& test) { return test.param.name; });

struct ImpossibleCase {
    const char* name;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
};

class EditProfileImpossibleTest : public testing::TestWithParam<ImpossibleCase> {};

TEST_P(EditProfileImpossibleTest, LeavesAllAsItIs) {
    const std::string before = "[a]\nk=1\n";
    std::string bytes = before;
    EXPECT_EQ(EditProfile(bytes, GetParam().section, GetParam().key, GetParam().value),
              ProfileEditResult::Impossible);
    EXPECT_EQ(bytes, before);
}

INSTANTIATE_TEST_SUITE_P(Names, EditProfileImpossibleTest,
                         testing::Values(ImpossibleCase{"NullSection", nullptr, L"k", L"1"},
                                         ImpossibleCase{"LineEndInValue", L"a", L"k", L"1\n[b]"},
                                         ImpossibleCase{"ReturnInValue", L"a", L"k", L"1\r"},
                                         ImpossibleCase{"LineEndInKey", L"a", L"n\nm", L"1"},
                                         ImpossibleCase{"EqualsSignInKey", L"a", L"n=m", L"1"},
                                         ImpossibleCase{"KeyLikeAComment", L"a", L";n", L"1"},
                                         ImpossibleCase{"KeyLikeAHead", L"a", L"[n]", L"1"},
                                         ImpossibleCase{"KeyAndValueLikeAHead", L"a", L"[n", L"1]"},
                                         ImpossibleCase{"LineEndInSection", L"b\nc", L"k", L"1"}),
                         [](const auto& test) { return test.param.name; });

struct SetCase {
    const char* name;
    std::string before;
    std::vector<ProfileValue> values;  // of section "a"
    std::string after;
};

class SetProfileValuesTest : public testing::TestWithParam<SetCase> {};

TEST_P(SetProfileValuesTest, GivesTheBytesOfOneEditAfterTheOther) {
    EXPECT_EQ(SetProfileValues(ProfileText(GetParam().before), L"a", GetParam().values), GetParam().after);
    std::string oneByOne = GetParam().before;
    for (const ProfileValue& value : GetParam().values)
        EditProfile(oneByOne, L"a", value.key.c_str(), value.value.c_str());
    EXPECT_EQ(oneByOne, GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Profiles, SetProfileValuesTest,
    testing::Values(
        SetCase{"None", "[a]\nk=1\n", {}, "[a]\nk=1\n"},
        SetCase{"ReplacedInTheOrderOfTheFile",
                "[a]\nk=1\nm = 2 \nn=3\n[b]\nk=4\n",
                {{L"N", L"33"}, {L"k", L"1111"}, {L"m", L""}},
                "[a]\nk=1111\nm =  \nn=33\n[b]\nk=4\n"},
        SetCase{"AddedInTheOrderOfTheValues",
                "[a]\r\nk=1\r\n\r\n[b]\r\n",
                {{L"z", L"1"}, {L"k", L"2"}, {L"y", L"3"}},
                "[a]\r\nk=2\r\nz=1\r\ny=3\r\n\r\n[b]\r\n"},
        SetCase{"LastLineWithoutEnd",
                "x=1\n[a]\nk",
                {{L"m", L"2"}, {L"k", L"1"}, {L"n", L"3"}},
                "x=1\n[a]\nk=1\nm=2\nn=3\n"},
        SetCase{"NewSection", "[b]\nx=1", {{L"k", L"1"}, {L"m", L"2"}}, "[b]\nx=1\n[a]\nk=1\nm=2\n"},
        SetCase{"EmptyFile", "", {{L"k", L"1"}, {L"m", L"2"}}, "[a]\r\nk=1\r\nm=2\r\n"},
        SetCase{"SameValues", "[a]\nk= 1\nm=2\n", {{L"m", L"2"}, {L"k", L"1"}}, "[a]\nk= 1\nm=2\n"},
        SetCase{"Utf16",
                "\xFF\xFE[\0a\0]\0\n\0k\0=\0v\0"s,
                {{L"m", L"x"}, {L"k", L"yz"}},
                "\xFF\xFE[\0a\0]\0\n\0k\0=\0y\0z\0\n\0m\0=\0x\0\n\0"s}),
    [](const auto& test) { return test.param.name; });

TEST(SetProfileValues, OneImpossibleValueGivesNothing) {
    const ProfileText profile("[a]\nk=1\n");
    const std::vector<ProfileValue> values = {{L"k", L"2"}, {L"m", L"1\n[b]"}, {L"n", L"3"}};
    EXPECT_EQ(SetProfileValues(profile, L"a", values), std::nullopt);
    EXPECT_EQ(SetProfileValues(profile, L"b\nc", {values.data(), 1}), std::nullopt);
}

TEST(EditProfile, ACodePageThatLacksACharacterWritesWhatTheCodecGives) {
    const ProfileCodec questionMarks = {
        [](std::string_view bytes) { return std::wstring(bytes.begin(), bytes.end()); },
        [](std::wstring_view text) { return std::string(text.size(), '?'); }};
    std::string bytes = "[?]\n?=1\n";
    EXPECT_EQ(EditProfile(bytes, L"?", L"?", L"ab", questionMarks), ProfileEditResult::Changed);
    EXPECT_EQ(bytes, "[?]\n?=??\n");
}

}  // namespace
}  // namespace vastrelline
