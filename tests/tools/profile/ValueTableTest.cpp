// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "profile/PlainWords.h"
#include "profile/ValueTable.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Table(const std::string& bytes, size_t width, ExportKind kind = ExportKind::Plain) {
    const ProfileFile file("p.ini", bytes);
    return FormatValueTable(ReadEffectiveValues(file, MakeSectionPlan(file, "A", kind)), width);
}

const std::string kList =
    "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=3\n00_MAX_SLOPE=1,5\n01_Function_Number=77\n";

TEST(ValueTable, HasALineForEachKey) {
    const std::string table = Table(kList, 120);
    EXPECT_THAT(table, HasSubstr("\n00 CLAHE\n"));
    EXPECT_THAT(table, HasSubstr("  00_Function_Number  3      line 4           1 to 13\n"));
    EXPECT_THAT(table,
                HasSubstr("  00_BLOCK_SIZE       64     default          64 to 256, a power of two\n"));
    EXPECT_THAT(
        table,
        HasSubstr("  00_MAX_SLOPE        1      line 5, misread  the decimal sign is a point: read as 1\n"));
    EXPECT_THAT(table, HasSubstr("\n01 no stage: passed over"));
    EXPECT_THAT(table, HasSubstr("  LITTLEENDIAN        1      default          no effect\n"));
}

TEST(ValueTable, KeepsToTheWidth) {
    for (const size_t width : {60U, 80U, 120U}) {
        std::istringstream lines(Table(kList + "WRITE_PATH=" + std::string(200, 'x') + "\n", width));
        for (std::string line; std::getline(lines, line);) EXPECT_LE(CountCharacters(line), width) << line;
    }
}

TEST(ValueTable, SaysInFullWhySomethingElseIsRead) {
    EXPECT_THAT(Table(kList, 60),
                HasSubstr("line 5, misread\n      the decimal sign is a point: read as 1\n"));
}

TEST(ValueTable, ShowsOnlyTheSwitchOfAStepThatIsOff) {
    const std::string table = Table("[A]\nx=1\n", 100);
    EXPECT_THAT(table, HasSubstr("\nMedian, first: off\n  PRE_MEDIAN "));
    EXPECT_THAT(table, Not(HasSubstr("PRE_MEDIAN_SIZE")));
    EXPECT_THAT(Table("[A]\nPRE_MEDIAN=1\n", 100), HasSubstr("PRE_MEDIAN_SIZE"));
}

TEST(ValueTable, TellsOfTheSensorsOwnValuesWhereARunWritesThem) {
    EXPECT_THAT(Table(kList, 100), HasSubstr("each run first writes the sensor's own ten values there"));
    EXPECT_THAT(Table("[A]\nx=1\n", 100), Not(HasSubstr("each run first writes")));
}

TEST(ValueTable, TellsOfAKeyWithoutEqualsSign) {
    EXPECT_THAT(Table("[A]\nBITSTORED\n", 100), HasSubstr("default  has no equals sign\n"));
}

TEST(DescribePlan, NamesWhatRuns) {
    const ProfileFile file("p.ini", kList);
    EXPECT_EQ(DescribePlan("p.ini", MakeSectionPlan(file, "a", ExportKind::NE), TraitsOf(ExportKind::NE)),
              "p.ini, section a: extended chain by ImageProcessing_NE");
}

}  // namespace
}  // namespace vastrelline
