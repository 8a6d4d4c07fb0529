// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "messages/ToolError.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

constexpr const char* kProfile =
    "; mine\r\n[A]\r\nPROCMODE=2\nFunctionCount=2\r\n00_Function_Number = 10 "
    "\r\n01_Function_Number=9\n[B]\nX=1\n";

TEST(DeskEdits, SetOneValueAndKeepEveryOtherByte) {
    EXPECT_EQ(SetKey("p.ini", kProfile, "a", "00_function_number", "7"),
              "; mine\r\n[A]\r\nPROCMODE=2\nFunctionCount=2\r\n00_Function_Number = 7 "
              "\r\n01_Function_Number=9\n[B]\nX=1\n");
    EXPECT_EQ(SetKey("p.ini", "[A]\nK=1\n[B]\n", "A", "L", "2"), "[A]\nK=1\nL=2\n[B]\n");
    EXPECT_THROW(SetKey("p.ini", kProfile, "A", "K", "1\n2"), InputError);
    EXPECT_THROW(SetKey("p.ini", kProfile, "A", "K=1", "2"), InputError);
    const std::string cut("PROCMODE\0X", 10);
    EXPECT_THROW(SetKey("p.ini", kProfile, "A", cut, "2"), InputError);
    EXPECT_THROW(SetKey("p.ini", kProfile, "A", "PROCMODE", cut), InputError);
    EXPECT_THROW(UnsetKey("p.ini", kProfile, "[A]\n", "A", cut), InputError);
}

TEST(DeskEdits, TakeAKeyBackToTheFile) {
    const std::string edited =
        SetKey("p.ini", SetKey("p.ini", kProfile, "A", "PROCMODE", "3"), "A", "NEW", "1");
    EXPECT_EQ(UnsetKey("p.ini", UnsetKey("p.ini", edited, kProfile, "A", "PROCMODE"), kProfile, "A", "NEW"),
              kProfile);
    EXPECT_EQ(UnsetKey("p.ini", kProfile, kProfile, "A", "MISSING"), kProfile);
}

TEST(DeskEdits, SwitchPlacesOffInACopy) {
    EXPECT_EQ(SwitchOff("p.ini", kProfile, "A", {}), kProfile);
    EXPECT_EQ(SwitchOff("p.ini", "[A]\nX=5\nY=6\n", "A", {"X", "Z"}), "[A]\nX=0\nY=6\nZ=0\n");
}

TEST(DeskEdits, KnowTheSwitchOfAPlace) {
    const ProfileFile listed(
        "p.ini", "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n01_Function_Number=99\n");
    const SectionPlan list = MakeSectionPlan(listed, "A", ExportKind::Plain);
    std::vector<std::string> keys;
    for (const PlannedPlace& place : list.places) keys.push_back(SwitchKeyOf(place));
    EXPECT_EQ(keys, (std::vector<std::string>{"", "", "00_Function_Number", "01_Function_Number"}));
    const ProfileFile fixed("p.ini", "[A]\nPROCMODE=1\n");
    size_t switched = 0;
    for (const PlannedPlace& place : MakeSectionPlan(fixed, "A", ExportKind::Plain).places) {
        if (SwitchKeyOf(place).empty()) continue;
        EXPECT_EQ(SwitchKeyOf(place), FixedSteps()[switched].switchKey);
        ++switched;
    }
    EXPECT_EQ(switched, FixedSteps().size());
}

TEST(DeskEdits, AreToldInAFewWords) {
    const ProfileFile before("p.ini", "[A]\nX=1\nY=2\nZ=3\n[B]\nX=1\n");
    const auto words = [&](const char* bytes) {
        return DescribeEdits(before, ProfileFile("p.ini", bytes), "A");
    };
    EXPECT_EQ(words("; x\n[b]\nX= 1\n[a]\nZ=3\nY=2\nX=1\n"), "");
    EXPECT_EQ(words("[A]\nX=1.5\nY=2\nZ=3\n[B]\nX=1\n"), "X 1 -> 1.5");
    EXPECT_EQ(words("[A]\nx=1\nY=\nZ=3\n[B]\nX=1\n"), "Y 2 -> empty");
    EXPECT_EQ(words("[A]\nX=1\nY=2\n[B]\nX=1\n"), "Z 3 -> none");
    EXPECT_EQ(words("[A]\nW=0\nX=5\nY=2\n[B]\nX=1\n"), "W none -> 0, 2 more");
    EXPECT_EQ(words("[B]\nX=1\n"), "X 1 -> none, 2 more");
    // Stages of a weak frame, and the sensor's values, have sections of their own.
    EXPECT_EQ(words("[B]\nX=9\n[A]\nX=1\nY=2\nZ=3\n"), "[B] X 1 -> 9");
    EXPECT_EQ(words("[A]\nX=1\nY=2\nZ=3\n[C]\nK=1\n[c]\nL=1\n"), "[C] K none -> 1, 1 more");
    EXPECT_EQ(words("[B]\nX=9\n[A]\nX=1\nY=2\nZ=4\n"), "Z 3 -> 4, 1 more");
}

// The state of the desk waits for it: a search through all keys for each of them would be felt by whoever
// runs this.
TEST(DeskEdits, DescribeLongProfiles) {
    std::string text = "[A]\n";
    for (int i = 0; i < 40'000; ++i) text += "KEY" + std::to_string(i) + "=1\n";
    const ProfileFile before("p.ini", text);
    const ProfileFile after("p.ini", text + "LAST=2\n");
    EXPECT_EQ(DescribeEdits(before, after, "A"), "LAST none -> 2");
}

}  // namespace
}  // namespace vastrelline
