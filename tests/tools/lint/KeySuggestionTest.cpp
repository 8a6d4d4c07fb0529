// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "lint/KeySuggestion.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kList =
    "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=3\n01_Function_Number=3\n02_Function_Number=8\n";

// What is suggested for a last line of the section.
KeySuggestion Suggested(const std::string& line) {
    const ProfileFile file("P.ini", kList + line + "\n");
    const LintedSection section = MakeLintedSection(file, *file.FindSection("A"));
    return KeySuggester(section).Suggest(file.Sections()[0].entries.back());
}

TEST(KeySuggestion, StaysAtThePositionOfTheKey) {
    const KeySuggestion suggestion = Suggested("01_MAX_SLOP=2");
    EXPECT_EQ(suggestion.name, "01_MAX_SLOPE");
    EXPECT_TRUE(suggestion.isSure);
}

TEST(KeySuggestion, AnotherPositionIsNeverSure) {
    const KeySuggestion suggestion = Suggested("02_MAX_SLOP=2");
    EXPECT_EQ(suggestion.name, "00_MAX_SLOPE");
    EXPECT_FALSE(suggestion.isSure);
}

TEST(KeySuggestion, TwoNamesThatAreNearAreNotSure) {
    const KeySuggestion suggestion = Suggested("0_MAX_SLOPE=2");
    EXPECT_EQ(suggestion.name, "00_MAX_SLOPE");
    EXPECT_FALSE(suggestion.isSure);
}

TEST(KeySuggestion, IsEmptyForWhatIsNearNothing) {
    EXPECT_EQ(Suggested("QUITE_ANOTHER_WORD=2").name, "");
    std::string longName(1000, 'M');
    EXPECT_EQ(Suggested(longName.append("=2")).name, "");
}

TEST(PlacesOfKey, AreThoseOfTheList) {
    const ProfileFile file("P.ini", kList);
    const LintedSection section = MakeLintedSection(file, *file.FindSection("A"));
    EXPECT_THAT(PlacesOfKey(section, "max_slope"), ElementsAre("00_MAX_SLOPE", "01_MAX_SLOPE"));
    EXPECT_THAT(PlacesOfKey(section, "MEDIAN_SIZE"), IsEmpty());
}

TEST(AskFor, ListsNames) {
    EXPECT_EQ(AskFor({}, "nothing"), "nothing");
    EXPECT_EQ(AskFor({"a"}, "nothing"), "did you mean a?");
    EXPECT_EQ(AskFor({"a", "b", "c"}, "nothing"), "did you mean a, b or c?");
}

}  // namespace
}  // namespace vastrelline
