// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "profile/KeyExplanation.h"
#include "profile/PlainWords.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string Explain(const std::string& word, size_t width = 80) {
    return ExplainForPeople(LookUpKey(word).value(), {}, width);
}

std::vector<KeyOccurrence> Occurrences(const std::string& word, const std::string& bytes) {
    const ProfileFile file("p.ini", bytes);
    return FindOccurrences(LookUpKey(word).value(),
                           ReadEffectiveValues(file, MakeSectionPlan(file, "A", ExportKind::Plain)));
}

TEST(KeyExplanation, TellsMeaningRangeAndDefault) {
    const std::string text = Explain("04_max_slope");
    EXPECT_THAT(text, StartsWith("MAX_SLOPE: key of the stage CLAHE (3)\n\n  Clip limit"));
    EXPECT_THAT(text, HasSubstr("\n  sensible  1.2 to 3\n  default   1.5\n"));
    EXPECT_THAT(text, HasSubstr("\n  in a list 04_MAX_SLOPE where CLAHE stands at position 4"));
    EXPECT_THAT(text, HasSubstr("\n  fixed     MAX_SLOPE; CONTRAST_ENHANCE2 at 1 runs the stage\n"));
    EXPECT_THAT(text, HasSubstr("\n  note      "));
}

TEST(KeyExplanation, NamesTheFormsOfAKey) {
    EXPECT_THAT(Explain("MEDIAN_SIZE"), HasSubstr("NN_MEDIAN_SIZE, NN being the position of Median in"));
    EXPECT_THAT(Explain("MEDIAN_SIZE", 120), HasSubstr("; PRE_MEDIAN, POST_MEDIAN at 1 run the stage\n"));
    EXPECT_THAT(Explain("PRE_MEDIAN_SIZE"), HasSubstr("NN_MEDIAN_SIZE, NN being"));
    EXPECT_THAT(Explain("OUTPUTRANGE"), HasSubstr("  fixed     read there, too\n"));
    EXPECT_THAT(Explain("RCCutOff"), Not(HasSubstr("in a list")));
    EXPECT_THAT(Explain("RCCutOff"), HasSubstr("  sensor    159 is written by a run"));
    EXPECT_THAT(Explain("Function_Number"), HasSubstr("3 CLAHE, 4 Adaptive unsharp"));
    EXPECT_THAT(Explain("LITTLEENDIAN"), HasSubstr("no effect on any result"));
}

TEST(KeyExplanation, ExplainsAStageWithItsKeys) {
    const std::string text = Explain("CLAHE");
    EXPECT_THAT(text, StartsWith("stage CLAHE (3)\n"));
    EXPECT_THAT(text, HasSubstr("\n  fixed     switched by CONTRAST_ENHANCE2\n"));
    EXPECT_THAT(text, HasSubstr("\n  MAX_SLOPE   1.5  1.2 to 3\n"));
    EXPECT_THAT(Explain("HDR"), HasSubstr("not in the fixed chain"));
}

TEST(KeyExplanation, HasNoMarkdownAndKeepsToTheWidthButInTables) {
    for (const Stage& stage : AllStageRows()) {
        const std::string text = Explain(std::string(stage.name), 80);
        EXPECT_THAT(text, Not(HasSubstr("](")));
        EXPECT_THAT(text, Not(HasSubstr("`")));
        for (const Key& key : stage.keys) {
            std::istringstream lines(Explain(std::string(key.name), 80));
            for (std::string line; std::getline(lines, line);) EXPECT_LE(CountCharacters(line), 80U) << line;
        }
    }
}

TEST(KeyExplanation, FindsAKeyInAProfile) {
    const std::string list =
        "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=6\n00_GAUSSIAN_SIZE=2,5\n01_Function_Number="
        "8\n";
    const std::vector<KeyOccurrence> all = Occurrences("GAUSSIAN_SIZE", list);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].place, "00 Pyramid enhancement");
    EXPECT_EQ(all[0].value.line, 5U);
    EXPECT_EQ(all[1].value.reading.mark, ReadingMark::Default);
    EXPECT_EQ(Occurrences("01_GAUSSIAN_SIZE", list).size(), 1U);
    EXPECT_EQ(Occurrences("02_GAUSSIAN_SIZE", list).size(), 0U);
    // A stage stands for all its keys and its number.
    EXPECT_EQ(Occurrences("Gaussian", list).size(), 5U);
    EXPECT_THAT(
        ExplainForPeople(LookUpKey("GAUSSIAN_SIZE").value(), all, 80),
        HasSubstr("\nIn section A:\n  00_GAUSSIAN_SIZE = 2  (line 5, misread); the decimal sign is a point: "
                  "read as 2\n"));
}

TEST(KeyExplanation, FindsTheSameKeyInTheFixedChain) {
    const std::vector<KeyOccurrence> found = Occurrences("MAX_SLOPE", "[A]\nMAX_SLOPE=2\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].value.name, "MAX_SLOPE");
}

TEST(KeyExplanation, IsAnObjectForPrograms) {
    const nlohmann::ordered_json object = ExplainToJson(
        LookUpKey("04_MAX_SLOPE").value(),
        Occurrences("MAX_SLOPE", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n00_MAX_SLOPE=2\n"));
    EXPECT_EQ(object.at("name"), "MAX_SLOPE");
    EXPECT_EQ(object.at("position"), 4);
    EXPECT_EQ(object.at("keys").at(0).at("default"), 1.5);
    EXPECT_EQ(object.at("keys").at(0).at("stage"), 3);
    EXPECT_EQ(object.at("keys").at(0).at("takesPosition"), true);
    EXPECT_EQ(object.at("occurrences").at(0).at("key"), "00_MAX_SLOPE");
    EXPECT_EQ(object.at("occurrences").at(0).at("line"), 5);
    EXPECT_EQ(ExplainToJson(LookUpKey("3").value(), {}).at("stage").at("keys").size(), 3U);
}

}  // namespace
}  // namespace vastrelline
