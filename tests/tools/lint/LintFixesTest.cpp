// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "lint/LintFixes.h"
#include "lint/LintRules.h"

namespace vastrelline {
namespace {

std::string Fixed(const std::string& text) { return FixProfile("P.ini", text, {}).bytes; }

const std::string kList = "[A]\r\nPROCMODE=2\r\nFunctionCount=1\r\n00_Function_Number=3\r\n";

struct FixCase {
    const char* name;
    std::string before;
    std::string after;
};

class EachFix : public testing::TestWithParam<FixCase> {};

TEST_P(EachFix, ChangesWhatIsCertainAndNothingElse) {
    const FixCase& c = GetParam();
    EXPECT_EQ(Fixed(c.before), c.after);
    EXPECT_EQ(Fixed(c.after), c.after);
}

INSTANTIATE_TEST_SUITE_P(
    Fixes, EachFix,
    testing::Values(
        FixCase{"Comma", kList + " 00_MAX_SLOPE =  1,5  \r\n; end",
                kList + " 00_MAX_SLOPE =  1.5  \r\n; end"},
        FixCase{"ThousandsAreNotCertain", kList + "00_MAX_SLOPE=1,500\n", kList + "00_MAX_SLOPE=1,500\n"},
        FixCase{"NorIsAnInteger", kList + "00_BLOCK_SIZE=64,5\n", kList + "00_BLOCK_SIZE=64,5\n"},
        FixCase{"NorQuotes", kList + "00_MAX_SLOPE=\"1,5\"\n", kList + "00_MAX_SLOPE=\"1,5\"\n"},
        FixCase{"Misspelt", kList + "00_MAX_SLOP = 1.5\n", kList + "00_MAX_SLOPE = 1.5\n"},
        FixCase{"MisspeltValueToo", kList + "00_MAX_SLOP=1,5\n", kList + "00_MAX_SLOPE=1.5\n"},
        FixCase{"ThreeLettersAreNotCertain", kList + "00_MX_SLP=1.5\n", kList + "00_MX_SLP=1.5\n"},
        FixCase{"NorAreTwoInAShortName", kList + "MIN_SLOPE=2\n00_MIN_SLOPE=2\n",
                kList + "MIN_SLOPE=2\n00_MIN_SLOPE=2\n"},
        FixCase{"NorIsOneInAVeryShortOne", "[Settings]\nClip=1\n", "[Settings]\nClip=1\n"},
        FixCase{"NorIsAnotherDigit", "[A]\nVERSION2=1\nPRE_GAUSSIAN2=1\n",
                "[A]\nVERSION2=1\nPRE_GAUSSIAN2=1\n"},
        FixCase{"NorIsALineSetAside", "[A]\nxSAVE_IMAGE=1\n_PROCMODE=2\nSAVE_LOG_=1\n",
                "[A]\nxSAVE_IMAGE=1\n_PROCMODE=2\nSAVE_LOG_=1\n"},
        FixCase{"NorAreTwoLinesForOneName", kList + "00_MAX_SLPE=2\n00_MAX_SLOP=1.5\n",
                kList + "00_MAX_SLPE=2\n00_MAX_SLOP=1.5\n"},
        FixCase{"NorIsANameThatIsThere", kList + "00_MAX_SLOPE=2\n00_MAX_SLOP=1.5\n",
                kList + "00_MAX_SLOPE=2\n00_MAX_SLOP=1.5\n"},
        FixCase{"Separator", "[A]\nWRITE_PATH=C:\\dumps\n", "[A]\nWRITE_PATH=C:\\dumps\\\n"},
        FixCase{"SeparatorOfAFolderThatIsHere", "[A]\nWRITE_PATH=/usr", "[A]\nWRITE_PATH=/usr/"},
        FixCase{"WhatIsNoFolderMayBeAPrefix", "[A]\nWRITE_PATH=/usr/dump", "[A]\nWRITE_PATH=/usr/dump"},
        FixCase{"PrefixOfDumpsIsNotCertain", "[A]\nWRITE_PATH=/dumps/a_", "[A]\nWRITE_PATH=/dumps/a_"},
        FixCase{"StagesSwitchedOffByTheCountStayOff", kList + "01_Function_Number=8\n02_Function_Number=9\n",
                kList + "01_Function_Number=8\n02_Function_Number=9\n"},
        FixCase{"CountTooLarge", "[A]\nPROCMODE=2\nFunctionCount=7\n00_Function_Number=3\n",
                "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n"},
        FixCase{"AGapIsNotCertain", kList + "02_Function_Number=8\n", kList + "02_Function_Number=8\n"},
        FixCase{"SameTwice", kList + "00_MAX_SLOPE=2\n; between\n00_max_slope=2\n",
                kList + "00_MAX_SLOPE=2\n; between\n"},
        FixCase{"TwiceWithTwoValues", kList + "00_MAX_SLOPE=2\n00_MAX_SLOPE=3\n",
                kList + "00_MAX_SLOPE=2\n00_MAX_SLOPE=3\n"}),
    [](const auto& test) { return test.param.name; });

TEST(FixProfile, WritesTheEncodingOfTheFile) {
    const auto wide = [](const std::string& text) {
        std::string bytes = "\xFF\xFE";
        for (const char c : text) bytes.append({c, '\0'});
        return bytes;
    };
    EXPECT_EQ(Fixed(wide(kList + "00_MAX_SLOP=1,5\n")), wide(kList + "00_MAX_SLOPE=1.5\n"));
}

TEST(FixProfile, MendsTheSectionThatIsAskedForOnly) {
    const std::string text = "[A]\nSAVE_LOGG=1\n[B]\nSAVE_LOGG=1\n";
    EXPECT_EQ(FixProfile("P.ini", text, "B").bytes, "[A]\nSAVE_LOGG=1\n[B]\nSAVE_LOG=1\n");
}

TEST(FixProfile, LeavesNothingThatItCouldMend) {
    const std::string text =
        kList + "00_MAX_SLOP=1,5\n00_MAX_SLOPE=1.5\nWRITE_PATH=.\nwrite_path=.\n00_HISTO_BIN=256\n";
    const FixedProfile fixed = FixProfile("P.ini", text, {});
    EXPECT_GT(fixed.count, 2U);
    for (const LintFinding& each : LintProfile(ProfileFile("P.ini", fixed.bytes)))
        EXPECT_FALSE(each.fix.has_value()) << FormatFinding(each.finding);
}

// Bytes, letters and lines of profiles in any order.
std::string Hostile(std::mt19937& random) {
    static const std::vector<std::string> kPieces = {"[A]\n",
                                                     "[A",
                                                     "]",
                                                     "=",
                                                     "\n",
                                                     "\r",
                                                     "00_",
                                                     "_",
                                                     "FunctionCount=3\n",
                                                     "PROCMODE=2\n",
                                                     "PROCMODE=3\n",
                                                     "00_Function_Number=3\n",
                                                     "01_Function_Number=1e9\n",
                                                     "MAX_SLOPE",
                                                     "1,5",
                                                     "\"",
                                                     std::string(1, '\0'),
                                                     "\xFF\xFE",
                                                     "\xEF\xBB\xBF",
                                                     "\xE4",
                                                     "999999999_",
                                                     "[IP_LOWMODE]\n",
                                                     "[Settings]\n",
                                                     ";",
                                                     "WRITE_PATH=x\n",
                                                     "SAVE_IMAGE=1\n",
                                                     "00_MAX_SLOP=2,5\n",
                                                     "[]\n",
                                                     " ",
                                                     "4294967297",
                                                     "-",
                                                     "e",
                                                     "nan",
                                                     "\x1A"};
    std::string text;
    if (random() % 4 == 0) text = random() % 2 == 0 ? "\xFF\xFE" : "\xFE\xFF";
    for (size_t count = random() % 60; count > 0; --count) {
        if (random() % 5 == 0)
            text.push_back(static_cast<char>(random() & 0xFFU));
        else
            text += kPieces[random() % kPieces.size()];
    }
    return text;
}

TEST(FixProfile, ComesToAnEndWithAnyBytes) {
    std::mt19937 random(15);
    for (int i = 0; i < 2000; ++i) {
        const std::string text = Hostile(random);
        SCOPED_TRACE(testing::PrintToString(text));
        const ProfileFile file("P.ini", text);
        const size_t lines = file.PlaceOf(text.size()).line;
        for (const LintFinding& each : LintProfile(file)) {
            EXPECT_LE(each.finding.line, lines);
            EXPECT_FALSE(each.finding.text.empty());
        }
        const std::string once = Fixed(text);
        EXPECT_EQ(Fixed(once), once);
    }
}

TEST(FixProfile, TakesLongLinesAndManyOfThem) {
    constexpr size_t kMegabyte = size_t{1} << 20U;
    const std::string longName = "[A]\n" + std::string(kMegabyte, 'K') + "=1\n";
    const std::vector<LintFinding> findings = LintProfile(ProfileFile("P.ini", longName));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_LT(findings[0].finding.text.size(), 200U);
    EXPECT_EQ(LintProfile(ProfileFile("P.ini", "[A]\nVERSION=" + std::string(kMegabyte, 'v'))).size(), 1U);
    EXPECT_EQ(LintProfile(ProfileFile("P.ini", "[A]\nPROCMODE=1\n" + std::string(kMegabyte, '\n'))).size(),
              0U);
    std::string many = "[A]\nPROCMODE=2\nFunctionCount=2000000000\n";
    for (int i = 0; i < 20000; ++i)
        many += std::to_string(100 + i) + "_Function_Number=3\nODD_" + std::to_string(i) + "=1\n";
    EXPECT_GE(LintProfile(ProfileFile("P.ini", many)).size(), 20000U);
}

}  // namespace
}  // namespace vastrelline
