#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "commands/OutputRange.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

struct ProfileCase {
    const char* name;
    std::string text;
    int32_t number;  // of key K in section S, with default -7
};

class ProfileNumberTest : public testing::TestWithParam<ProfileCase> {};

TEST_P(ProfileNumberTest, IsFound) {
    EXPECT_EQ(ProfileNumber(GetParam().text, "S", "K", -7), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Profiles, ProfileNumberTest,
    testing::Values(
        ProfileCase{"Plain", "[S]\nK=12\n", 12}, ProfileCase{"WindowsLineEnds", "[S]\r\nK=12\r\n", 12},
        ProfileCase{"NoLastLineEnd", "[S]\nK=12", 12}, ProfileCase{"OtherCase", "[s]\nk=12", 12},
        ProfileCase{"Blanks", "  [ S ] \n\t K = 12 \n", 12},
        ProfileCase{"FirstKeyCounts", "[S]\nK=1\nK=2", 1},
        ProfileCase{"FirstSectionCounts", "[S]\nA=1\n[S]\nK=2", -7},
        ProfileCase{"OtherSectionBefore", "[T]\nK=1\n[S]\nK=2", 2},
        ProfileCase{"OtherSectionBehind", "[S]\nA=1\n[T]\nK=2", -7}, ProfileCase{"NoSection", "K=2", -7},
        ProfileCase{"Empty", "", -7}, ProfileCase{"Comment", "[S]\n;K=1\nK=2", 2},
        ProfileCase{"Negative", "[S]\nK=-3", -3}, ProfileCase{"DigitsThenText", "[S]\nK=5 levels", 5},
        ProfileCase{"Text", "[S]\nK=many", 0}, ProfileCase{"EmptyValue", "[S]\nK=", 0},
        ProfileCase{"Quotes", "[S]\nK=\"9\"", 9}, ProfileCase{"KeyWithoutValue", "[S]\nK\nK=3", 3},
        ProfileCase{"LongerKey", "[S]\nKK=1\nK=3", 3}, ProfileCase{"HeadWithoutEnd", "[S\nK=1", -7},
        ProfileCase{"Utf8Mark", "\xEF\xBB\xBF[S]\nK=4", 4},
        ProfileCase{"Utf16", "\xFF\xFE[\0S\0]\0\n\0K\0=\0006\0"s, 6},
        ProfileCase{"Wraps", "[S]\nK=4294967298", 2}),
    [](const auto& test) { return test.param.name; });

TEST(OutputRange, IsTheKeyOfTheSection) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "p.ini", "[General]\nOutputRange=1023\n");
    EXPECT_EQ(ReadOutputRange(folder.Narrow("p.ini"), "GENERAL"), 1023);
    EXPECT_EQ(ReadOutputRange(folder.Path().string() + "\\p.ini", "General"), 1023);
    EXPECT_EQ(ReadOutputRange(folder.Narrow("p.ini"), "Other"), 4095);
}

TEST(OutputRange, OfNoUseIsThatOf12Bits) {
    const TemporaryFolder folder;
    for (const std::string value : {"0", "-5", "65536", "none"}) {
        WriteBytes(folder.Path() / "p.ini", "[General]\nOUTPUTRANGE=" + value + "\n");
        EXPECT_EQ(ReadOutputRange(folder.Narrow("p.ini"), "General"), 4095) << value;
    }
    EXPECT_EQ(ReadOutputRange(folder.Narrow("missing.ini"), "General"), 4095);
    EXPECT_EQ(ReadOutputRange(folder.Path().string(), "General"), 4095);
}

}  // namespace
}  // namespace vastrelline
