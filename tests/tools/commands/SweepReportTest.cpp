// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "commands/SweepReport.h"
#include "library/ExportRequest.h"
#include "pictures/Caption.h"

namespace vastrelline {
namespace {

// A sweep of one key that stands at 1.5.
class SweepReportTest : public testing::Test {
protected:
    SweepReportTest() {
        options_.frame = "frame.raw";
        options_.section = "A";
        plan_.places = FindSweptPlaces(input_, "A", {{"00_MAX_SLOPE", {"1", "2"}}});
        unchanged_.isOwn = true;
        unchanged_.small = Canvas(10, 10, 200);
        for (const char* const value : {"1", "2"}) {
            SweptPicture& picture = pictures_.emplace_back();
            picture.values = {value};
            picture.small = Canvas(10, 10, 100);
        }
    }

    std::ptrdiff_t CountOnSheet(uint8_t level) const {
        const Canvas sheet = DrawSweepSheet(report_);
        return std::count(sheet.Levels().begin(), sheet.Levels().end(), level);
    }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    RunOptions options_;
    FolderRun input_{
        ProfileFile("p.ini", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n00_MAX_SLOPE=1.5\n"),
        TraitsOf(ExportKind::Plain),
        {},
        {}};
    ExportCaller caller_;
    SweepPlan plan_{options_, input_, {}, {}, caller_};
    SweptPicture unchanged_;
    std::vector<SweptPicture> pictures_;
    SweepReport report_{&plan_, &unchanged_, &pictures_, "out"};
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(SweepReportTest, TheSheetBeginsWithTheProfilesOwnValueIfItIsNotSwept) {
    EXPECT_EQ(CountOnSheet(100), 200);
    EXPECT_EQ(CountOnSheet(200), 100);
    pictures_[1].isOwn = true;
    EXPECT_EQ(CountOnSheet(100), 200);
    EXPECT_EQ(CountOnSheet(200), 0);
}

TEST_F(SweepReportTest, TheHighestCodeCounts) {
    EXPECT_EQ(CodeOf(report_), ExitCode::Well);
    pictures_[0].error = OutputError("x", "y");
    pictures_[1].error = InputError("x", "y");
    EXPECT_EQ(CodeOf(report_), ExitCode::Output);
}

TEST_F(SweepReportTest, WhatIsFoundAtSeveralValuesIsSaidOnce) {
    pictures_[0].findings = {{Severity::Warning, "p.ini", 5, 1, "first", "value-range"}};
    pictures_[1].findings = {{Severity::Warning, "p.ini", 5, 1, "second", "value-range"},
                             {Severity::Warning, "p.ini", 0, 1, "other", "black"}};
    const std::vector<Finding> sums = SumUpFindings(report_);
    ASSERT_EQ(sums.size(), 2U);
    EXPECT_EQ(sums[0].text, "first (and 1 more)");
    EXPECT_EQ(sums[1].text, "other");
}

TEST_F(SweepReportTest, TheTableHasALineForEachValue) {
    pictures_[1].error = ProcessingError({}, "x");
    const std::string table = FormatSweep(report_);
    EXPECT_NE(table.find("00_MAX_SLOPE is 1.5 in the profile (line 5)"), std::string::npos) << table;
    EXPECT_NE(table.find("as it is"), std::string::npos) << table;
    EXPECT_NE(table.find("failed"), std::string::npos) << table;
}

}  // namespace
}  // namespace vastrelline
