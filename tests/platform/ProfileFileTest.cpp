// What the four profile operations do on every platform, on real files.
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "platform/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

class ProfileFileTest : public testing::Test {
protected:
    std::wstring Path() const { return folder_.Wide(L"profile.ini"); }
    void Write(std::string_view bytes) const { WriteBytes(folder_.Path() / "profile.ini", bytes); }
    std::string Read() const { return ReadBytes(folder_.Path() / "profile.ini"); }

    int32_t Int(const wchar_t* section, const wchar_t* key, int32_t defaultValue) const {
        return PlatformProfileInt(section, key, defaultValue, Path().c_str());
    }

    std::wstring Text(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue = L"dflt",
                      uint32_t size = 261) const {
        std::vector<wchar_t> buffer(size, L'#');
        const uint32_t count =
            PlatformProfileString(section, key, defaultValue, buffer.data(), size, Path().c_str());
        EXPECT_EQ(buffer[count], L'\0');
        return {buffer.data(), count};
    }

    // The entries with a '|' behind each.
    std::wstring Section(const wchar_t* section, uint32_t size = 32767) const {
        std::vector<wchar_t> buffer(size, L'#');
        const uint32_t count = PlatformProfileSection(section, buffer.data(), size, Path().c_str());
        EXPECT_EQ(buffer[count], L'\0');
        std::wstring list(buffer.data(), count);
        for (wchar_t& character : list)
            if (character == L'\0') character = L'|';
        return list;
    }

    TemporaryFolder folder_;
};

TEST_F(ProfileFileTest, AMissingFileGivesTheDefaults) {
    EXPECT_EQ(Int(L"a", L"k", -10), -10);
    EXPECT_EQ(Int(L"a", L"k", std::numeric_limits<int32_t>::min()), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(Text(L"a", L"k"), L"dflt");
    EXPECT_EQ(Text(L"a", L"k", nullptr), L"");
    EXPECT_EQ(Section(L"a"), L"");
}

TEST_F(ProfileFileTest, MissingSectionsAndKeysGiveTheDefaults) {
    Write("[b]\r\nk=1\r\n");
    EXPECT_EQ(Int(L"a", L"k", -10), -10);
    EXPECT_EQ(Int(L"b", L"m", 7), 7);
    EXPECT_EQ(Text(L"b", L"m"), L"dflt");
    EXPECT_EQ(Section(L"a"), L"");
}

TEST_F(ProfileFileTest, NamesMatchInAnyCase) {
    Write("[Alpha]\r\nKeyOne=1\r\n");
    EXPECT_EQ(Int(L"ALPHA", L"keyone", 0), 1);
    EXPECT_EQ(Text(L"alpha", L"KEYONE"), L"1");
    EXPECT_EQ(Section(L"aLPHA"), L"KeyOne=1|");
}

TEST_F(ProfileFileTest, BlanksAroundAreDropped) {
    Write("[a]\r\n k = v w \t\r\nn=\t 42 \r\n");
    EXPECT_EQ(Text(L"a", L"k"), L"v w");
    EXPECT_EQ(Int(L"a", L"n", 0), 42);
    EXPECT_EQ(Section(L"a"), L"k=v w|n=42|");
}

TEST_F(ProfileFileTest, TheFirstOfTwoCounts) {
    Write("[a]\r\nk=1\r\nk=2\r\n[b]\r\n[a]\r\nm=3\r\n");
    EXPECT_EQ(Int(L"a", L"k", 0), 1);
    EXPECT_EQ(Int(L"a", L"m", 0), 0);
    EXPECT_EQ(Section(L"a"), L"k=1|k=2|");
}

TEST_F(ProfileFileTest, CommentsAndBlankLinesAreNotListed) {
    Write("[a]\r\n;k=1\r\n\r\nk=2 ; kept\r\n[b]\r\n; only this\r\n\r\n");
    EXPECT_EQ(Text(L"a", L"k"), L"2 ; kept");
    EXPECT_EQ(Section(L"a"), L"k=2 ; kept|");
    EXPECT_EQ(Section(L"b"), L"");
}

TEST_F(ProfileFileTest, OnePairOfQuotesIsDroppedAndListed) {
    Write("[a]\r\nk=\"  v \"\r\nn='7'\r\nu=\"v\r\n");
    EXPECT_EQ(Text(L"a", L"k"), L"  v ");
    EXPECT_EQ(Int(L"a", L"n", 0), 7);
    EXPECT_EQ(Text(L"a", L"u"), L"\"v");
    EXPECT_EQ(Section(L"a"), L"k=\"  v \"|n='7'|u=\"v|");
}

TEST_F(ProfileFileTest, LongTextsAreCut) {
    Write("[a]\r\nk=0123456789\r\n");
    EXPECT_EQ(Text(L"a", L"k", L"", 11), L"0123456789");
    EXPECT_EQ(Text(L"a", L"k", L"", 10), L"012345678");
    EXPECT_EQ(Text(L"a", L"k", L"", 2), L"0");
    EXPECT_EQ(Text(L"a", L"k", L"", 1), L"");
}

TEST_F(ProfileFileTest, NumbersStopAtTheFirstOtherCharacterAndWrap) {
    Write("[a]\r\na=12abc\r\nb=-3.9\r\nc=word\r\nd=4294967297\r\ne=- 5\r\n");
    EXPECT_EQ(Int(L"a", L"a", 77), 12);
    EXPECT_EQ(Int(L"a", L"b", 77), -3);
    EXPECT_EQ(Int(L"a", L"c", 77), 0);
    EXPECT_EQ(Int(L"a", L"d", 77), 1);
    EXPECT_EQ(Int(L"a", L"e", 77), 0);
}

TEST_F(ProfileFileTest, Utf16WithAMarkIsRead) {
    Write("\xFF\xFE[\0a\0]\0\r\0\n\0k\0=\0\xE9\0\r\0\n\0"s);
    EXPECT_EQ(Text(L"a", L"k"), L"\u00E9");
}

TEST_F(ProfileFileTest, WritingMakesFileSectionAndKey) {
    const std::wstring path = Path();
    EXPECT_TRUE(PlatformWriteProfile(L"a", L"k", L"1", path.c_str()));
    EXPECT_EQ(Read(), "[a]\r\nk=1\r\n");
    EXPECT_TRUE(PlatformWriteProfile(L"b", L"k", L"2", path.c_str()));
    EXPECT_TRUE(PlatformWriteProfile(L"A", L"M", L"3", path.c_str()));
    EXPECT_EQ(Read(), "[a]\r\nk=1\r\nM=3\r\n[b]\r\nk=2\r\n");
}

TEST_F(ProfileFileTest, WritingReplacesAndDeletes) {
    Write("[a]\r\nj=0\r\nk=1\r\nm=2\r\n[b]\r\nx=1\r\n");
    const std::wstring path = Path();
    EXPECT_TRUE(PlatformWriteProfile(L"a", L"K", L"99", path.c_str()));
    EXPECT_EQ(Read(), "[a]\r\nj=0\r\nk=99\r\nm=2\r\n[b]\r\nx=1\r\n");
    EXPECT_TRUE(PlatformWriteProfile(L"a", L"k", nullptr, path.c_str()));
    EXPECT_EQ(Read(), "[a]\r\nj=0\r\nm=2\r\n[b]\r\nx=1\r\n");
    EXPECT_TRUE(PlatformWriteProfile(L"a", nullptr, nullptr, path.c_str()));
    EXPECT_EQ(Read(), "[b]\r\nx=1\r\n");
}

TEST_F(ProfileFileTest, AMissingFolderIsNotMade) {
    const std::wstring path = folder_.Wide(L"none\\profile.ini");
    EXPECT_FALSE(PlatformWriteProfile(L"a", L"k", L"1", path.c_str()));
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "none"));
}

}  // namespace
}  // namespace vastrelline
