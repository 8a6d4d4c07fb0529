// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <filesystem>
#include <string>
#include <type_traits>
#include <vector>

#include "config/CRegistryIO.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CRegistryIOTest : public testing::Test {
protected:
    void WriteProfile(const std::string& text) const { WriteBytes(folder_.Path() / "p.ini", text); }
    std::string ProfileBytes() const { return ReadBytes(folder_.Path() / "p.ini"); }
    std::wstring ProfilePath() const { return folder_.Wide(L"p.ini"); }
    CRegistryIO Profile() const { return {nullptr, ProfilePath().c_str(), 1}; }
    std::vector<std::wstring> Keys(const std::wstring& section) const {
        std::vector<std::wstring> keys;
        Profile().ForEachKey(section, [&](const std::wstring& key) { keys.push_back(key); });
        return keys;
    }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
};

TEST_F(CRegistryIOTest, FolderAndNameAreJoinedUnlessThePathIsWhole) {
    WriteProfile("[S]\r\nK=5\r\n");
    const std::wstring folder = Folder().Path().wstring();
    EXPECT_EQ(CRegistryIO(folder.c_str(), L"p.ini", 0).ReadProfileInt(L"S", L"K", -1), 5);
    EXPECT_EQ(CRegistryIO(L"no such folder", ProfilePath().c_str(), 1).ReadProfileInt(L"S", L"K", -1), 5);
    EXPECT_EQ(CRegistryIO(L"no such folder", ProfilePath().c_str(), -3).ReadProfileInt(L"S", L"K", -1), 5);
    EXPECT_EQ(CRegistryIO(L"no such folder", L"p.ini", 0).ReadProfileInt(L"S", L"K", -1), -1);
}

TEST_F(CRegistryIOTest, NullTextsNameNoProfile) {
    EXPECT_EQ(CRegistryIO(nullptr, nullptr, 1).ReadProfileInt(L"S", L"K", 17), 17);
    EXPECT_EQ(CRegistryIO(nullptr, nullptr, 0).ReadProfileInt(L"S", L"K", 17), 17);
    EXPECT_EQ(CRegistryIO(nullptr, nullptr, 1).SectionHasEntries(L"S"), 0);
}

TEST_F(CRegistryIOTest, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<CRegistryIO>); }

struct IntCase {
    const char* name;
    const char* line;
    int32_t expected;
};

class ProfileIntTest : public CRegistryIOTest, public testing::WithParamInterface<IntCase> {};

TEST_P(ProfileIntTest, IsReadFromTheLine) {
    WriteProfile(std::string("[S]\r\nA=1\r\n") + GetParam().line + "\r\nZ=2\r\n");
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -10), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ProfileIntTest,
    testing::Values(IntCase{"Number", "K=12", 12}, IntCase{"Negative", "K=-7", -7},
                    IntCase{"BlanksAround", "K =  12  ", 12}, IntCase{"DigitsThenText", "K=12abc", 12},
                    IntCase{"StopsAtThePoint", "K=3.9", 3}, IntCase{"NoNumber", "K=abc", 0},
                    IntCase{"OnlyMinus", "K=-", 0}, IntCase{"Largest", "K=2147483647", INT32_MAX},
                    IntCase{"Smallest", "K=-2147483648", INT32_MIN}, IntCase{"OtherCase", "k=6", 6},
                    IntCase{"Quoted", "K=\"8\"", 8}, IntCase{"MissingKeyGivesTheDefault", "J=4", -10},
                    IntCase{"CommentedOutKeyIsMissing", ";K=4", -10}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(CRegistryIOTest, MissingFileAndMissingSectionGiveTheDefaults) {
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -10), -10);
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"K", L"text"), L"text");
    EXPECT_EQ(Profile().ReadProfileDouble(L"S", L"K", 2.5), 2.5);
    WriteProfile("[T]\r\nK=1\r\n");
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -10), -10);
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"K", L"text"), L"text");
    EXPECT_EQ(Profile().ReadProfileDouble(L"S", L"K", 2.5), 2.5);
}

TEST_F(CRegistryIOTest, TextIsReadWithoutBlanksAroundIt) {
    WriteProfile("[S]\r\nK= one two \t\r\nEMPTY=\r\nQUOTED=\" padded \"\r\n");
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"K", L"d"), L"one two");
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"EMPTY", L"d"), L"");
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"QUOTED", L"d"), L" padded ");
}

TEST_F(CRegistryIOTest, TextIsCutTo260Characters) {
    WriteProfile("[S]\r\nFITS=" + std::string(260, 'a') + "\r\nLONG=" + std::string(260, 'b') +
                 "c\r\nHUGE=" + std::string(100000, 'd') + "\r\n");
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"FITS", L""), std::wstring(260, L'a'));
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"LONG", L""), std::wstring(260, L'b'));
    EXPECT_EQ(Profile().ReadProfileString(L"S", L"HUGE", L""), std::wstring(260, L'd'));
}

struct DoubleCase {
    const char* name;
    const char* line;
    double defaultValue;
    double expected;
};

class ProfileDoubleTest : public CRegistryIOTest, public testing::WithParamInterface<DoubleCase> {};

TEST_P(ProfileDoubleTest, IsReadFromTheLine) {
    WriteProfile(std::string("[S]\r\n") + GetParam().line + "\r\n");
    EXPECT_EQ(Profile().ReadProfileDouble(L"S", L"K", GetParam().defaultValue), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ProfileDoubleTest,
    testing::Values(DoubleCase{"Number", "K=0.75", 0.5, 0.75}, DoubleCase{"Negative", "K=-2.5", 0.5, -2.5},
                    DoubleCase{"Integer", "K=4", 0.5, 4.0}, DoubleCase{"Exponent", "K=1e3", 0.5, 1000.0},
                    DoubleCase{"StopsAtText", "K=1.5x7", 0.5, 1.5},
                    DoubleCase{"StopsAtTheComma", "K=1,5", 0.5, 1.0},
                    DoubleCase{"NoNumberIsZero", "K=abc", 0.5, 0.0},
                    DoubleCase{"EmptyValueIsZeroNotTheDefault", "K=", 0.5, 0.0},
                    DoubleCase{"MissingKeyGivesTheDefault", "J=1", 0.2, 0.2},
                    DoubleCase{"NegativeDefault", "J=1", -1.25, -1.25},
                    DoubleCase{"DefaultKeepsSixDecimals", "J=1", 0.123456, 0.123456},
                    DoubleCase{"DefaultLosesTheSeventhDecimal", "J=1", 0.1234564, 0.123456},
                    DoubleCase{"TinyDefaultBecomesZero", "J=1", 0.0000001, 0.0},
                    DoubleCase{"TinyValueOfTheFileStays", "K=0.0000001", 0.5, 0.0000001}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(CRegistryIOTest, AnObjectReadsOneVersionOfTheFileAndTheNextOneTheNext) {
    const CRegistryIO none = Profile();
    WriteProfile("[S]\r\nK=1\r\n");
    const CRegistryIO first = Profile();
    WriteProfile("[S]\r\nK=2\r\n");
    EXPECT_EQ(none.ReadProfileInt(L"S", L"K", -1), -1);
    EXPECT_EQ(first.ReadProfileInt(L"S", L"K", -1), 1);
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -1), 2);
}

TEST_F(CRegistryIOTest, TellsHowTheReadingEnded) {
    EXPECT_EQ(Profile().State(), ReadResult::Missing);
    WriteProfile("");
    EXPECT_EQ(Profile().State(), ReadResult::Done);
    WriteProfile("[S]\r\nK=1");
    EXPECT_EQ(Profile().FileBytes(), "[S]\r\nK=1");
    const std::wstring folderAsProfile = Folder().Path().wstring();
    EXPECT_EQ(CRegistryIO(nullptr, folderAsProfile.c_str(), 1).State(), ReadResult::NoFile);
}

// Writes one value and brings it to the file.
bool Store(const CRegistryIO& profile, const wchar_t* section, const wchar_t* key, int32_t value) {
    profile.WriteProfileInt(section, key, value);
    EXPECT_EQ(profile.ReadProfileInt(section, key, value - 1), value);
    return profile.StoreValues();
}

TEST_F(CRegistryIOTest, WritingMakesFileSectionAndKey) {
    EXPECT_TRUE(Store(Profile(), L"S", L"K", 42));
    EXPECT_EQ(ProfileBytes(), "[S]\r\nK=42\r\n");
    EXPECT_TRUE(Store(Profile(), L"S", L"L", INT32_MIN));
    EXPECT_EQ(ProfileBytes(), "[S]\r\nK=42\r\nL=-2147483648\r\n");
}

TEST_F(CRegistryIOTest, WritingReplacesTheValueInPlace) {
    WriteProfile("[A]\r\nK=1\r\n[S]\r\nJ=1\r\nK=1\r\nL=1\r\n[Z]\r\nK=1\r\n");
    EXPECT_TRUE(Store(Profile(), L"S", L"K", -5));
    EXPECT_EQ(ProfileBytes(), "[A]\r\nK=1\r\n[S]\r\nJ=1\r\nK=-5\r\nL=1\r\n[Z]\r\nK=1\r\n");
}

TEST_F(CRegistryIOTest, ValuesReachTheFileTogetherAndNotBefore) {
    WriteProfile("[S]\r\nK=1\r\n");
    const CRegistryIO profile = Profile();
    profile.WriteProfileInt(L"S", L"K", 2);
    profile.WriteProfileInt(L"S", L"k", 3);  // the same key: the last value counts
    profile.WriteProfileInt(L"T", L"K", 4);
    profile.WriteProfileInt(L"S", L"L", 5);
    EXPECT_EQ(profile.ReadProfileInt(L"S", L"K", -1), 3);
    EXPECT_EQ(profile.ReadProfileInt(L"T", L"K", -1), 4);
    EXPECT_EQ(profile.ReadProfileInt(L"S", L"L", -1), 5);
    EXPECT_EQ(ProfileBytes(), "[S]\r\nK=1\r\n");
    EXPECT_EQ(profile.FileBytes(), "[S]\r\nK=1\r\n");
    EXPECT_TRUE(profile.StoreValues());
    EXPECT_EQ(ProfileBytes(), "[S]\r\nK=3\r\nL=5\r\n[T]\r\nK=4\r\n");
}

TEST_F(CRegistryIOTest, NothingToStoreLeavesTheFileUntouched) {
    WriteProfile("[S]\r\n K = 1 \r\n");
    const auto before = std::filesystem::last_write_time(Folder().Path() / "p.ini");
    EXPECT_TRUE(Profile().StoreValues());
    EXPECT_TRUE(Store(Profile(), L"S", L"K", 1));
    EXPECT_EQ(ProfileBytes(), "[S]\r\n K = 1 \r\n");
    EXPECT_EQ(std::filesystem::last_write_time(Folder().Path() / "p.ini"), before);
}

TEST_F(CRegistryIOTest, FileThatSomebodyChangedKeepsHisVersion) {
    WriteProfile("[S]\r\nK=1\r\n");
    const CRegistryIO profile = Profile();
    WriteProfile("[S]\r\nK=1\r\nEDITED=1\r\n");
    EXPECT_FALSE(Store(profile, L"S", L"K", 2));
    EXPECT_EQ(ProfileBytes(), "[S]\r\nK=1\r\nEDITED=1\r\n");
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -1), 1);
}

TEST_F(CRegistryIOTest, FailedWriteIsFalseAndNothingElse) {
    const std::wstring inMissingFolder = Folder().Wide(L"missing") + L"\\p.ini";
    EXPECT_FALSE(Store(CRegistryIO(nullptr, inMissingFolder.c_str(), 1), L"S", L"K", 1));
    const std::wstring folderAsProfile = Folder().Path().wstring();
    EXPECT_FALSE(Store(CRegistryIO(nullptr, folderAsProfile.c_str(), 1), L"S", L"K", 1));
    EXPECT_TRUE(std::filesystem::is_empty(Folder().Path()));
}

TEST_F(CRegistryIOTest, ReadOnlyProfileIsReadAndNothingOfItIsLost) {
    WriteProfile("[S]\r\nK=1\r\nL=2\r\n");
    std::filesystem::permissions(Folder().Path() / "p.ini", std::filesystem::perms::owner_read,
                                 std::filesystem::perm_options::replace);
    // A user with all rights may pass over the mark; then the value is there, and nothing else has changed.
    const bool isWritten = Store(Profile(), L"S", L"K", 7);
    EXPECT_EQ(ProfileBytes(), isWritten ? "[S]\r\nK=7\r\nL=2\r\n" : "[S]\r\nK=1\r\nL=2\r\n");
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"L", -1), 2);
    // Whether the file took it or not, the next call finds what this one has set.
    EXPECT_EQ(Profile().ReadProfileInt(L"S", L"K", -1), 7);
    EXPECT_EQ(Profile().FileBytes(), ProfileBytes());
}

TEST_F(CRegistryIOTest, KeysAreThereWhateverTheirValue) {
    WriteProfile("[S]\r\nA=1\r\nB=\r\nC\r\n;D=1\r\n[T]\r\nE=1\r\n");
    for (const wchar_t* key : {L"a", L"B", L"C"}) EXPECT_TRUE(Profile().HasKey(L"s", key)) << key;
    for (const wchar_t* key : {L"D", L"E", L""}) EXPECT_FALSE(Profile().HasKey(L"S", key)) << key;
    EXPECT_FALSE(Profile().HasKey(L"U", L"A"));
}

struct EntriesCase {
    const char* name;
    const char* text;
    int32_t expected;
};

class SectionHasEntriesTest : public CRegistryIOTest, public testing::WithParamInterface<EntriesCase> {};

TEST_P(SectionHasEntriesTest, TellsWhetherThereIsALine) {
    WriteProfile(GetParam().text);
    EXPECT_EQ(Profile().SectionHasEntries(L"S"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Sections, SectionHasEntriesTest,
                         testing::Values(EntriesCase{"OneLine", "[S]\r\nK=1\r\n", 1},
                                         EntriesCase{"OtherCase", "[s]\r\nK=1\r\n", 1},
                                         EntriesCase{"EmptyValue", "[S]\r\nK=\r\n", 1},
                                         EntriesCase{"NoLine", "[S]\r\n", 0},
                                         EntriesCase{"NoLineThenNextSection", "[S]\r\n[T]\r\nK=1\r\n", 0},
                                         EntriesCase{"NoSuchSection", "[T]\r\nK=1\r\n", 0},
                                         EntriesCase{"EmptyFile", "", 0}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(CRegistryIOTest, SectionOfAMissingFileHasNoEntries) {
    EXPECT_EQ(Profile().SectionHasEntries(L"S"), 0);
}

TEST_F(CRegistryIOTest, SectionLargerThanItsListHasEntries) {
    std::string text = "[S]\r\n";
    while (text.size() < 100000) text += "KEY_NUMBER_" + std::to_string(text.size()) + "=value\r\n";
    WriteProfile(text);
    EXPECT_EQ(Profile().SectionHasEntries(L"S"), 1);
}

TEST_F(CRegistryIOTest, KeysAreListedInTheOrderOfTheFile) {
    WriteProfile("[R]\r\nX=1\r\n[S]\r\nb=1\r\n;c=1\r\n\r\nA = 2\r\nb2=\r\n[T]\r\nY=1\r\n");
    EXPECT_THAT(Keys(L"S"), ElementsAre(L"b", L"A", L"b2"));
    EXPECT_THAT(Keys(L"U"), IsEmpty());
}

TEST_F(CRegistryIOTest, EveryKeyIsListedHoweverManyThereAre) {
    // Lists of 32764 to 32768 characters lie around the first buffer's limit; the last one is far past it.
    for (const size_t characters :
         {size_t{32764}, size_t{32765}, size_t{32766}, size_t{32767}, size_t{32768}, size_t{50000}}) {
        SCOPED_TRACE(characters);
        std::string text = "[S]\r\n";
        std::vector<std::wstring> keys;
        size_t used = 0;
        while (used < characters) {
            // Each key takes its length and a terminator; the last one fills up what is left.
            const size_t left = characters - used;
            const size_t length = left < 60 ? left - 1 : 39;
            const std::wstring number = std::to_wstring(keys.size());
            keys.push_back(number + std::wstring(length - number.size(), L'k'));
            used += length + 1;
            for (const wchar_t character : keys.back()) text += static_cast<char>(character);
            text += "=1\r\n";
        }
        WriteProfile(text);
        EXPECT_EQ(Keys(L"S"), keys);
    }
}

}  // namespace
}  // namespace vastrelline
