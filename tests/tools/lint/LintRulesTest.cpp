// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "lint/LintRules.h"
#include "messages/ToolError.h"
#include "support/SourceTree.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct RuleCase {
    const char* name;
    const char* rule;
    std::string bad;   // has one finding, of this rule
    size_t line;       // of that finding
    std::string good;  // has none
};

std::vector<std::string> Said(const std::string& text) {
    std::vector<std::string> lines;
    for (const LintFinding& each : LintProfile(ProfileFile("P.ini", text)))
        lines.push_back(FormatFinding(each.finding));
    return lines;
}

// A section that lists CLAHE, and lines behind it.
std::string Clahe(const std::string& more) {
    return "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n" + more;
}

std::string Fixed(const std::string& more) { return "[A]\nPROCMODE=1\n" + more; }

const std::string kLow = "[IP_LOWMODE]\n06_POST_GAMMA_RATIO=1\n";

class EachRule : public testing::TestWithParam<RuleCase> {};

TEST_P(EachRule, FindsTheBadProfileOnly) {
    const RuleCase& c = GetParam();
    const std::vector<LintFinding> findings = LintProfile(ProfileFile("P.ini", c.bad));
    ASSERT_EQ(findings.size(), 1U) << testing::PrintToString(Said(c.bad));
    EXPECT_EQ(findings[0].finding.rule, c.rule);
    EXPECT_EQ(findings[0].finding.line, c.line);
    EXPECT_THAT(Said(c.good), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rules, EachRule,
    testing::Values(
        RuleCase{"NoSection", "no-section", "PROCMODE=2\n", 0, Fixed("")},
        RuleCase{"EmptyProfile", "no-section", "", 0, Fixed("")},
        RuleCase{"StrayByte", "encoding", "[A]\nPROCMODE=1\nVERSION=\xE4\n", 3, Fixed("VERSION=\xC3\xA4\n")},
        RuleCase{"Zero", "encoding", Fixed("VERSION=1") + std::string("\0", 1) + "2\n", 3,
                 Fixed("VERSION=12\n")},
        RuleCase{"Utf16WithoutMark", "encoding", std::string("[\0A\0]\0\n\0P\0R\0O\0C\0M\0O\0D\0E\0=\0", 26),
                 1, std::string("\xFF\xFE[\0A\0]\0\n\0V\0E\0R\0S\0I\0O\0N\0=\0", 26)},
        RuleCase{"NoText", "encoding", "\x89PNG\r\n\x1A\n" + std::string(12, '\1') + "[A]\nx=1\n", 1,
                 Fixed("VERSION=1\t2\n")},
        RuleCase{"MarkWithin", "encoding",
                 Fixed("VERSION=\xEF\xBB\xBF"
                       "1\n"),
                 3, "\xEF\xBB\xBF" + Fixed("")},
        RuleCase{"BeforeHead", "before-head", "SAVE_LOG=1\n" + Fixed(""), 1,
                 "; words\n" + Fixed("SAVE_LOG=1\n")},
        RuleCase{"DuplicateSection", "duplicate-section", Fixed("") + "[a]\nx=1\n", 3,
                 Fixed("") + "[B]\nPROCMODE=1\n"},
        RuleCase{"SectionWithoutName", "unnameable-section", Fixed("") + "[ ]\n", 3, Fixed("")},
        RuleCase{"EmptySection", "empty-section", Fixed("") + "[B]\n", 3, Fixed("") + "[B]\nSAVE_LOG=0\n"},
        RuleCase{"NoEqualsSign", "no-key", Fixed("SAVE_LOG\n"), 3, Fixed("SAVE_LOG=1\n")},
        RuleCase{"OtherComment", "no-key", Fixed("# words\n"), 3, Fixed("; words\n")},
        RuleCase{"OpenHead", "no-key", Fixed("[B\n"), 3, Fixed("[B]\nSAVE_LOG=1\n")},
        RuleCase{"NoName", "no-key", Fixed("=5\n"), 3, Fixed("")},
        RuleCase{"UnknownKey", "unknown-key", Clahe("00_MAX_SLOP=1.5\n"), 5, Clahe("00_max_slope=1.5\n")},
        RuleCase{"UnknownPlainKey", "unknown-key", Fixed("SAVE_LOGG=1\n"), 3, Fixed("SAVE_LOG=1\n")},
        RuleCase{"PositionOfOneDigit", "unknown-key", Clahe("0_MAX_SLOPE=2\n"), 5, Clahe("00_MAX_SLOPE=2\n")},
        RuleCase{"OtherStage", "other-stage", Clahe("00_MEDIAN_SIZE=3\n"), 5, Clahe("00_BLOCK_SIZE=64\n")},
        RuleCase{"OtherStageInLow", "other-stage",
                 kLow + "00_MAX_SLOPE=2\n[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n", 3,
                 kLow + "03_MAX_SLOPE=2\n[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n"},
        RuleCase{"OtherPosition", "other-position", Clahe("04_MAX_SLOPE=2\n"), 5, Clahe("00_MAX_SLOPE=2\n")},
        RuleCase{"NoPosition", "other-position", Clahe("MEDIAN_Mode=2\n"), 5, Clahe("")},
        RuleCase{"PlainKeyInAList", "other-chain", Clahe("MAX_SLOPE=2\n"), 5, Fixed("MAX_SLOPE=2\n")},
        RuleCase{"ListKeyInFixed", "other-chain", Fixed("SETCLIPBIN=1\n"), 3, Clahe("SETCLIPBIN=1\n")},
        RuleCase{"SensorKeyElsewhere", "other-section", Fixed("FrameWidth=1300\n"), 3,
                 "[Settings]\nFrameWidth=1300\n"},
        RuleCase{"HostKeyInSettings", "other-section", "[Settings]\nSAVE_LOG=1\n", 2, Fixed("SAVE_LOG=1\n")},
        RuleCase{"DuplicateKey", "duplicate-key", Fixed("SAVE_LOG=1\nsave_log=0\n"), 4,
                 Fixed("SAVE_LOG=1\n")},
        RuleCase{"NoEffect", "no-effect", Clahe("CAPTION=x\n"), 5, Clahe("VERSION=x\n")},
        RuleCase{"DecimalComma", "decimal-comma", Clahe("00_MAX_SLOPE=1,5\n"), 5,
                 Clahe("00_MAX_SLOPE=1.5\n")},
        RuleCase{"Text", "text-as-number", Clahe("00_MAX_SLOPE=abc\n"), 5, Clahe("00_MAX_SLOPE=\"2\"\n")},
        RuleCase{"TextBehind", "text-as-number", Clahe("00_BLOCK_SIZE=64px\n"), 5,
                 Clahe("00_BLOCK_SIZE=64\n")},
        RuleCase{"CutExponent", "text-as-number", Clahe("00_MAX_SLOPE=2e\n"), 5,
                 Clahe("00_MAX_SLOPE=20e-1\n")},
        RuleCase{"Nothing", "text-as-number", Clahe("00_MAX_SLOPE=\n"), 5, Clahe("WRITE_PATH=\n")},
        RuleCase{"Fraction", "cut-fraction", Clahe("00_BLOCK_SIZE=64.5\n"), 5, Clahe("00_BLOCK_SIZE=64.0\n")},
        RuleCase{"Wrapped", "number-range", Clahe("00_BLOCK_SIZE=4294967360\n"), 5,
                 Clahe("00_BLOCK_SIZE=64\n")},
        RuleCase{"Long", "cut-value", Fixed("VERSION=" + std::string(261, 'v') + "\n"), 3,
                 Fixed("VERSION=" + std::string(260, 'v') + "\n")},
        RuleCase{"EvenWindow", "even-window",
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=7\n00_MEDIAN_SIZE=4\n", 5,
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=7\n00_MEDIAN_SIZE=5\n"},
        RuleCase{"OutOfRange", "value-range", Clahe("00_MAX_SLOPE=30\n"), 5, Clahe("00_MAX_SLOPE=3\n")},
        RuleCase{"NoPowerOfTwo", "value-range", Clahe("00_BLOCK_SIZE=100\n"), 5,
                 Clahe("00_BLOCK_SIZE=128\n")},
        RuleCase{"OutOfRangeOfItsMode", "value-range",
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=4\n00_MODE_CONTRAST=5\n"
                 "00_GAUSSIAN_SIZE_CONTRAST=3\n",
                 6,
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=4\n00_MODE_CONTRAST=1\n"
                 "00_GAUSSIAN_SIZE_CONTRAST=3\n"},
        RuleCase{"OutOfRangeOfTheFixedChain", "value-range", Fixed("PYRAMID_PROCESSING=1\nNOISE_WIDTH=1\n"),
                 4, Fixed("PYRAMID_PROCESSING=1\nNOISE_WIDTH=80\n")},
        RuleCase{"UnknownStage", "unknown-stage", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=31\n",
                 4, Clahe("")},
        RuleCase{"PassedOver", "passed-over", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=13\n", 4,
                 "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=13\n" + kLow},
        RuleCase{"CountTooSmall", "function-count",
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=8\n01_Function_Number=3\n", 5,
                 Clahe("")},
        RuleCase{"CountTooLarge", "function-count",
                 "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=8\n", 3, Clahe("")},
        RuleCase{"NoCount", "function-count", "[A]\nPROCMODE=2\n00_Function_Number=8\n", 1, Clahe("")},
        RuleCase{"Gap", "list-gap",
                 "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=8\n02_Function_Number=3\n", 3,
                 Clahe("")},
        RuleCase{"EmptyList", "empty-list", "[A]\nPROCMODE=2\n", 2, Clahe("")},
        RuleCase{"UnusedList", "unused-list", Fixed("00_Function_Number=3\n00_MAX_SLOPE=2\n"), 3, Clahe("")},
        RuleCase{"NoMode", "missing-procmode", "[A]\nFunctionCount=1\n00_Function_Number=3\n", 1, Clahe("")},
        RuleCase{"NoLowSection", "missing-low-section",
                 "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n", 2,
                 "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n" + kLow},
        RuleCase{"UnusedLowSection", "unused-low-section", Clahe("") + kLow, 5,
                 "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n" + kLow},
        RuleCase{"NoFolder", "missing-folder", Fixed("SAVE_IMAGE=1\n"), 3,
                 Fixed("SAVE_IMAGE=1\nWRITE_PATH=./\n")},
        RuleCase{"FolderThatIsNowhere", "missing-folder", Fixed("SAVE_IMAGE=1\nWRITE_PATH=./no/such/\n"), 4,
                 Fixed("SAVE_IMAGE=0\nWRITE_PATH=./no/such/\n")},
        RuleCase{"BackupBelowNothing", "missing-folder", Fixed("SAVE_BACKUP=1\nSAVE_BACKUPPATH=./no/such\n"),
                 4, Fixed("SAVE_BACKUP=1\nSAVE_BACKUPPATH=./such\n")},
        RuleCase{"NoSeparator", "folder-separator", Fixed("WRITE_PATH=./dumps\n"), 3,
                 Fixed("WRITE_PATH=.\\dumps\\\n")},
        RuleCase{"MessageBoxes", "message-boxes",
                 "[A]\nPROCMODE=3\nMSGBOX_ENABLE=1\nFunctionCount=1\n00_Function_Number=3\n" + kLow, 3,
                 "[A]\nPROCMODE=3\nMSGBOX_ENABLE=0\nFunctionCount=1\n00_Function_Number=3\n" + kLow}),
    [](const auto& test) { return test.param.name; });

TEST(LintRules, EachHasAGoodAndABadProfile) {
    std::set<std::string> tested;
    const auto* const unit = testing::UnitTest::GetInstance();
    for (int i = 0; i < unit->total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *unit->GetTestSuite(i);
        if (std::string(suite.name()) != "Rules/EachRule") continue;
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const std::string value = suite.GetTestInfo(j)->value_param();
            tested.insert(value.substr(0, value.find(' ')));
        }
    }
    for (const LintRule& rule : LintRules()) EXPECT_TRUE(tested.contains(std::string(rule.id))) << rule.id;
}

// How the cases above are listed.
void PrintTo(const RuleCase& c, std::ostream* stream) { *stream << c.rule << ' ' << c.name; }

TEST(LintRules, AreNamedOnceAndSayOneThingEach) {
    std::set<std::string_view> ids;
    for (const LintRule& rule : LintRules()) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
        EXPECT_NE(rule.findInFile == nullptr, rule.findInSection == nullptr) << rule.id;
        EXPECT_TRUE(rule.summary.ends_with('.') && rule.remedy.ends_with('.')) << rule.id;
    }
}

TEST(LintRules, StandOnTheirPage) {
    std::ifstream page(SourceTreeFolder() / "docs/profile-rules.md");
    const std::string text{std::istreambuf_iterator<char>(page), {}};
    for (const LintRule& rule : LintRules()) {
        const std::string row = "| `" + std::string(rule.id) + "` | " +
                                std::string(SeverityName(rule.severity)) + " | " + std::string(rule.summary) +
                                " " + std::string(rule.remedy) + " | " + (rule.canFix ? "yes" : "") + " |\n";
        EXPECT_THAT(text, HasSubstr(row));
    }
    size_t rows = 0;
    for (size_t at = text.find("\n| `"); at != std::string::npos; at = text.find("\n| `", at + 1)) ++rows;
    EXPECT_EQ(rows, LintRules().size());
}

TEST(LintProfile, SaysWhatWhereAndWhatToDo) {
    std::string text = "[A]\nPROCMODE=2\nFunctionCount=5\n";
    for (const char* const line :
         {"00_Function_Number=8\n", "01_Function_Number=10\n", "02_Function_Number=11\n",
          "03_Function_Number=6\n", "04_Function_Number=3\n"})
        text += line;
    text += std::string(32, '\n') + "04_MAX_SLOP=1.5\n";
    EXPECT_THAT(Said(text), ElementsAre("P.ini:41: warning: 04_MAX_SLOP is read by no stage; did you mean "
                                        "04_MAX_SLOPE? [unknown-key]"));
}

TEST(LintProfile, TellsTheColumnOfAValue) {
    EXPECT_THAT(Said(Clahe("00_MAX_SLOPE = 1,5\n")),
                ElementsAre("P.ini:5:16: warning: 00_MAX_SLOPE=1,5 is read as 1; write 1.5 [decimal-comma]"));
}

TEST(LintProfile, NamesTheRightPosition) {
    EXPECT_THAT(
        Said("[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=8\n01_Function_Number=3\n"
             "00_MAX_SLOPE=2\n"),
        ElementsAre("P.ini:6: warning: 00_MAX_SLOPE is a key of CLAHE, but position 00 is Gaussian; did you "
                    "mean 01_MAX_SLOPE? [other-stage]"));
}

// Keys that look misspelt and are the names that the library knows.
TEST(LintProfile, OffersRealNamesHoweverTheyAreSpelled) {
    const std::string section =
        "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=4\n00_MODE_CONTRAST=1\n";
    EXPECT_THAT(Said(section + "00_ENAHCNED_RATIO_CONTRAST=2\n"), IsEmpty());
    EXPECT_THAT(Said(section + "00_ENHANCED_RATIO_CONTRAST=2\n"),
                ElementsAre(HasSubstr("did you mean 00_ENAHCNED_RATIO_CONTRAST?")));
}

TEST(LintProfile, AKeyOfImageProcessingCrIsANoteWhereTheSectionIsMeantForIt) {
    const std::vector<LintFinding> findings =
        LintProfile(ProfileFile("P.ini", Clahe("CONTRAST_ENHANCE2=1\nMAX_SLOPE=2\n")));
    ASSERT_EQ(findings.size(), 2U);
    for (const LintFinding& each : findings) EXPECT_EQ(each.finding.severity, Severity::Note);
}

TEST(LintProfile, LooksAtOneSectionIfAsked) {
    const ProfileFile file("P.ini", "x=1\n" + Fixed("SAVE_LOGG=1\n") + "[B]\nPROCMOD=1\n");
    const std::vector<LintFinding> findings = LintProfile(file, "b");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].finding.line, 6U);
    EXPECT_EQ(LintProfile(file).size(), 3U);
    EXPECT_THROW(LintProfile(file, "C"), ToolError);
}

// What cannot be read as a list is told once, not with every key.
TEST(LintProfile, OneMistakeIsOneFinding) {
    const std::string list =
        "00_Function_Number=8\n00_GAUSSIAN_SIZE=1\n01_Function_Number=3\n01_MAX_SLOPE=2\n";
    EXPECT_EQ(Said("[A]\nPROCMOD=2\nFunctionCount=2\n" + list).size(), 1U);
    EXPECT_EQ(Said("[A]\nPROCMODE=2\nFunctionCont=2\n" + list).size(), 1U);
    EXPECT_EQ(Said("[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Nmber=8\n" + list.substr(21)).size(), 1U);
    EXPECT_EQ(Said("[A]\nPROCMODE=1\nFunctionCount=2\n" + list).size(), 2U);
}

}  // namespace
}  // namespace vastrelline
