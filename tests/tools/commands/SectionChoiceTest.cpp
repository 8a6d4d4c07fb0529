// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "commands/SectionChoice.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

const ProfileFile kProfile("p.ini", "[Low]\nPROCMODE=3\n[Listed]\nPROCMODE=2\n");

// What an error says, and with which code.
std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ToolError& error) {
        return std::to_string(static_cast<int>(error.Code())) + " " + error.what();
    }
    return "no error";
}

TEST(SectionChoice, TakesTheExportThatTheSectionIsMadeFor) {
    EXPECT_EQ(ChooseNamedExport(kProfile, "Low", ""), ExportKind::S);
    EXPECT_EQ(ChooseNamedExport(kProfile, "Listed", ""), ExportKind::Plain);
    EXPECT_EQ(ChooseNamedExport(kProfile, "Missing", ""), ExportKind::Plain);
}

TEST(SectionChoice, KnowsExportsByTheirWholeNamesAndEnds) {
    EXPECT_EQ(ChooseNamedExport(kProfile, "Low", "ImageProcessing"), ExportKind::Plain);
    EXPECT_EQ(ChooseNamedExport(kProfile, "Low", "imageprocessing_ns"), ExportKind::NS);
    EXPECT_EQ(ChooseNamedExport(kProfile, "Low", "NE"), ExportKind::NE);
    EXPECT_EQ(ChooseNamedExport(kProfile, "Low", "cr"), ExportKind::CR);
    EXPECT_EQ(ErrorOf([] { ChooseNamedExport(kProfile, "Low", "ImageProcesing_N"); }),
              "2 there is no export 'ImageProcesing_N'; did you mean 'ImageProcessing_N'?");
}

TEST(SectionChoice, RefusesASectionThatIsNotThere) {
    EXPECT_EQ(ErrorOf([] { PlanNamedSection(kProfile, "Lsted", ""); }),
              "2 p.ini: has no section 'Lsted'; did you mean 'Listed'?");
    EXPECT_EQ(ErrorOf([] { PlanNamedSection(kProfile, "", ""); }),
              "2 p.ini: has no section ''; it has Low, Listed");
    EXPECT_EQ(ErrorOf([] { PlanNamedSection(ProfileFile("q.ini", "x=1\n"), "A", ""); }),
              "3 q.ini: holds no section; 'vastrelline profile new' makes a profile");
    EXPECT_EQ(PlanNamedSection(kProfile, "LOW", "").chain, ChainKind::LowExposure);
}

}  // namespace
}  // namespace vastrelline
