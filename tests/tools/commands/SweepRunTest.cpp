// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/SweepRun.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

FolderRun InputOf(const std::string& profile) {
    return {ProfileFile("p.ini", profile), TraitsOf(ExportKind::S), {}, {}};
}

TEST(SweptPlaces, AreSpelledAsTheKeyTableSpellsThem) {
    const FolderRun input = InputOf("[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n");
    const std::vector<SweptPlace> places = FindSweptPlaces(input, "A", {{"00_max_slope", {"1", "2"}}});
    ASSERT_EQ(places.size(), 1U);
    EXPECT_EQ(places[0].swept.key, "00_MAX_SLOPE");
    EXPECT_EQ(places[0].section, "A");
    EXPECT_EQ(places[0].own.reading.mark, ReadingMark::Default);
}

TEST(SweptPlaces, AreThoseOfTheSectionBeforeThoseOfOthers) {
    const FolderRun input =
        InputOf("[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=3\n[Settings]\nTargetRange=3000\n");
    EXPECT_EQ(FindSweptPlaces(input, "A", {{"BITSTORED", {"12"}}})[0].section, "A");
    EXPECT_EQ(FindSweptPlaces(input, "A", {{"TargetRange", {"0"}}})[0].section, "Settings");
}

TEST(SweptPlaces, OfAKeyThatIsNotReadAreAnError) {
    const FolderRun input = InputOf("[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n");
    try {
        FindSweptPlaces(input, "A", {{"00_MAX_SLOP", {"1"}}});
        ADD_FAILURE();
    } catch (const UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr("did you mean '00_MAX_SLOPE'?"));
    }
    EXPECT_THROW(FindSweptPlaces(input, "A", {{"01_MAX_SLOPE", {"1"}}}), UsageError) << "behind the list";
    EXPECT_THROW(FindSweptPlaces(input, "A", {{"00_MAX_SLOPE", {"1"}}, {"00_max_slope", {"2"}}}), UsageError);
}

}  // namespace
}  // namespace vastrelline
