// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "commands/CommandTree.h"
#include "completion/Completion.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

constexpr const char* kProfile =
    "[General]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n00_POST_GAMMA_RATIO=1.5\n"
    "01_Function_Number=8\n[Low Dose]\nPROCMODE=3\n[O'Neil]\n";

class CompletionTest : public testing::Test {
protected:
    CompletionTest() { WriteBytes(folder_.Path() / "my p.ini", kProfile); }

    Completion Complete(const std::vector<std::string>& words, const std::string& current) {
        return CompleteWords(tree_.Root(), words, current);
    }
    std::vector<std::string> Texts(const std::vector<std::string>& words, const std::string& current) {
        std::vector<std::string> texts;
        for (const Candidate& candidate : Complete(words, current).candidates)
            texts.push_back(candidate.text);
        return texts;
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    CommandTree tree_;
    TemporaryFolder folder_;
    std::string profile_ = folder_.Narrow("my p.ini");
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(CompletionTest, OffersEveryCommandOfTheTable) {
    const std::vector<std::string> texts = Texts({}, "");
    for (const CommandEntry& entry : CommandTable())
        EXPECT_THAT(texts, Contains(std::string(entry.group.empty() ? entry.name : entry.group)));
    EXPECT_THAT(Texts({}, "co"), ElementsAre("compare", "convert", "completion"));
    EXPECT_EQ(Complete({}, "comp").candidates.at(0).description,
              "Tell whether frames are equal, or how they differ");
    EXPECT_THAT(Texts({}, "x"), IsEmpty());
}

TEST_F(CompletionTest, OffersOptionsThatAreNotThereYet) {
    EXPECT_THAT(Texts({"run"}, "--"), IsSupersetOf({"--profile", "--section", "--size", "--help"}));
    EXPECT_THAT(Texts({"run", "--profile", "a"}, "--"), Not(Contains("--profile")));
    EXPECT_THAT(Texts({"run"}, "--prof"), ElementsAre("--profile"));
    EXPECT_THAT(Texts({"run", "--"}, "--"), IsEmpty());
}

TEST_F(CompletionTest, LeavesFilesToTheShell) {
    EXPECT_EQ(Complete({"info"}, "").files, FileWish::Files);
    EXPECT_EQ(Complete({"info", "a.raw"}, "").files, FileWish::Files);  // takes several
    EXPECT_EQ(Complete({"run"}, "fra").files, FileWish::Files);
    EXPECT_EQ(Complete({"run", "--profile"}, "").files, FileWish::Files);
    const Completion inOneWord = Complete({"run"}, "--profile=a");
    EXPECT_EQ(inOneWord.files, FileWish::Files);
    EXPECT_EQ(inOneWord.filePrefix, "--profile=");
    EXPECT_EQ(Complete({"run", "--size"}, "").files, FileWish::None);
    EXPECT_EQ(Complete({"run"}, "--").files, FileWish::None);
}

TEST_F(CompletionTest, OffersTheSecondSectionOfAPair) {
    WriteBytes(folder_.Path() / "other.ini", "[Night]\n");
    const std::vector<std::string> oneProfile{"profile", "diff", profile_, "--section"};
    EXPECT_THAT(Texts(oneProfile, "Ge"), ElementsAre("General"));
    EXPECT_THAT(Texts(oneProfile, "General:L"), ElementsAre("General:Low Dose"));
    const std::vector<std::string> two{"profile", "diff", profile_, folder_.Narrow("other.ini"), "--section"};
    EXPECT_THAT(Texts(two, "General:"), ElementsAre("General:Night"));
    EXPECT_THAT(Texts({"profile", "show", profile_, "--section"}, "General:"), IsEmpty());
}

TEST_F(CompletionTest, OffersSectionsOfTheProfileInTheLine) {
    const std::vector<std::string> sections{"General", "Low Dose", "O'Neil"};
    EXPECT_EQ(Texts({"run", "a.raw", "--profile", profile_, "--section"}, ""), sections);
    EXPECT_EQ(Texts({"run", "--profile=" + profile_, "--section"}, ""), sections);
    EXPECT_EQ(Texts({"profile", "show", profile_, "--section"}, ""), sections);
    EXPECT_THAT(Texts({"run", "--profile", profile_}, "--section=Low"), ElementsAre("--section=Low Dose"));
    EXPECT_THAT(Texts({"run", "--profile", folder_.Narrow("missing.ini"), "--section"}, ""), IsEmpty());
    EXPECT_THAT(Texts({"run", "--section"}, ""), IsEmpty());
    EXPECT_EQ(Complete({"run", "--section"}, "").files, FileWish::None);
}

TEST_F(CompletionTest, OffersValuesOfAList) {
    EXPECT_THAT(Texts({"run", "--export"}, "ImageProcessing_N"),
                ElementsAre("ImageProcessing_N", "ImageProcessing_NS", "ImageProcessing_NE"));
    EXPECT_THAT(Texts({"profile", "new", "--sample"}, "den"), ElementsAre("dental"));
    EXPECT_THAT(Texts({"completion"}, ""), ElementsAre("bash", "zsh", "fish", "powershell"));
}

// The commands that take keys have them by these names.
class KeyCompletionTest : public CompletionTest {
protected:
    KeyCompletionTest() {
        CLI::App* const set = app_.add_subcommand("set");
        set->add_option("FILE", text_);
        set->add_option("KEY=VALUE", texts_);
        set->add_option("--section", text_);
        app_.add_subcommand("explain")->add_option("KEY", text_);
    }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    CLI::App app_;
    std::string text_;
    std::vector<std::string> texts_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(KeyCompletionTest, OffersKeysOfTheSection) {
    const Completion completion =
        CompleteWords(app_, {"set", profile_, "--section", "General"}, "00_POST_GAMMA_RATIO");
    ASSERT_EQ(completion.candidates.size(), 1U);
    EXPECT_EQ(completion.candidates[0].text, "00_POST_GAMMA_RATIO=");
    EXPECT_EQ(completion.candidates[0].description.rfind("now 1.5", 0), 0U)
        << completion.candidates[0].description;
    EXPECT_TRUE(completion.goesOn);
    // Position 1 holds the Gaussian, and its keys are offered though the section has none.
    const Completion other = CompleteWords(app_, {"set", profile_, "--section", "general"}, "01_");
    EXPECT_GT(other.candidates.size(), 1U);
    EXPECT_EQ(CompleteWords(app_, {"set", profile_, "--section", "General"}, "02_").candidates.size(), 0U);
}

TEST_F(KeyCompletionTest, WithoutAProfileOffersAllKeys) {
    const Completion completion = CompleteWords(app_, {"explain"}, "BITSTO");
    ASSERT_EQ(completion.candidates.size(), 1U);
    EXPECT_EQ(completion.candidates[0].text, "BITSTORED");
    EXPECT_FALSE(completion.goesOn);
    EXPECT_GT(CompleteWords(app_, {"explain"}, "").candidates.size(), 100U);
    EXPECT_GT(CompleteWords(app_, {"set", "missing.ini", "--section", "General"}, "").candidates.size(),
              100U);
}

}  // namespace
}  // namespace vastrelline
