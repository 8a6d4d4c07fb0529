// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "completion/CompletionReply.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class CompletionReplyTest : public testing::Test {
protected:
    CompletionReplyTest() {
        WriteBytes(folder_.Path() / "my p.ini", "[General]\n[Low Dose]\n");
        CLI::App* const run = app_.add_subcommand("run", "First line\nand more " + std::string(100, 'x'));
        run->add_option("FRAME", text_);
        run->add_option("--profile", text_)->type_name("FILE");
        run->add_option("--section", text_);
        run->add_option("--out-folder", text_)->type_name("FOLDER");
        app_.add_subcommand("set")->add_option("KEY=VALUE", text_);
    }
    std::string Bash(const std::string& line) { return AnswerShell(app_, {"bash", line}); }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    CLI::App app_;
    std::string text_;
    std::string quoted_ = "'" + folder_.Narrow("my p.ini") + "'";
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(CompletionReplyTest, BashGetsWhatItPutsAtTheEndOfTheLine) {
    EXPECT_EQ(Bash("vastrelline r"), "+run\n");
    EXPECT_EQ(Bash("NAME=1 vastrelline r"), "+run\n");
    EXPECT_EQ(Bash("vastrelline run --profile " + quoted_ + " --section Lo"), "+Low\\ Dose\n");
    EXPECT_EQ(Bash("vastrelline run --profile " + quoted_ + " --section \"Lo"), "+Low Dose\n");
    EXPECT_EQ(Bash("vastrelline run --profile=" + quoted_ + " --section=Lo"), "+Low\\ Dose\n");
    EXPECT_EQ(Bash("vastrelline run --profile=" + quoted_ + " --section='Lo"), "+Low Dose\n");
    EXPECT_EQ(Bash("vastrelline run --section Lo"), "");
    EXPECT_EQ(Bash("vastrelline run "), ":files \n");
    EXPECT_EQ(Bash("vastrelline run --profile=a"), ":files --profile=\n");
    EXPECT_EQ(Bash("vastrelline run --out-folder "), ":folders \n");
    EXPECT_EQ(Bash("vastrelline set BITSTO"), "+BITSTORED=\n:nospace\n");
    EXPECT_EQ(Bash("vastrell"), "");
    EXPECT_EQ(Bash(""), "");
}

TEST_F(CompletionReplyTest, OthersGetWordsAndDescriptions) {
    EXPECT_EQ(AnswerShell(app_, {"fish", "=r"}),
              "+run\tFirst line and more " + std::string(57, 'x') + "...\n");
    EXPECT_EQ(AnswerShell(app_, {"zsh", "='Lo", "run", "--profile", folder_.Narrow("my p.ini"), "--section"}),
              "+Low Dose\t\n");
    EXPECT_EQ(
        AnswerShell(app_, {"powershell", "=--section=G", "run", "--profile", folder_.Narrow("my p.ini")}),
        "+--section=General\t\n");
    EXPECT_EQ(AnswerShell(app_, {"fish", "="}).rfind("+run\t", 0), 0U);
}

TEST_F(CompletionReplyTest, OtherQuestionsHaveNoAnswer) {
    EXPECT_EQ(AnswerShell(app_, {}), "");
    EXPECT_EQ(AnswerShell(app_, {"fish"}), "");
    EXPECT_EQ(AnswerShell(app_, {"fish", "run"}), "");
}

TEST(CompletionQuestion, EndsWellWhateverIsAsked) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{},
                                                  {"bash"},
                                                  {"bash", "vastrelline run --section"},
                                                  {"fish", "=", "\x01"}}) {
        std::vector<std::string> all{kCompletionWord};
        all.insert(all.end(), words.begin(), words.end());
        const ToolRun run = RunTool(all, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
    }
    EXPECT_EQ(RunTool({kCompletionWord, "bash", "vastrelline comp"}, MustNotBeCalled).report,
              "+compare\n+completion\n");
}

}  // namespace
}  // namespace vastrelline
