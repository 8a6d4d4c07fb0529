// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <sstream>
#include <string>

#include "ToolRun.h"
#include "commands/ManualPage.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(ManualPage, NamesEveryCommandAndOption) {
    const CommandTree tree;
    const std::string page = MakeManualPage(tree);
    for (const CommandTree::Branch& branch : tree.Branches()) {
        const std::string name = (branch.entry->group.empty() ? "" : std::string(branch.entry->group) + " ") +
                                 std::string(branch.entry->name);
        const size_t start = page.find("\n.Ss " + name + "\n");
        ASSERT_NE(start, std::string::npos) << name;
        const std::string part = page.substr(start, page.find("\n.S", start + 1) - start);
        for (const CLI::Option* const option : branch.app->get_options()) {
            for (const std::string& word : option->get_lnames())
                EXPECT_NE(part.find("Fl -" + word), std::string::npos) << name << " --" << word;
            const std::string item = ".It Ar " + EscapeForMdoc(option->get_name()) + "\n";
            EXPECT_TRUE(!option->get_positional() || part.find(item) != std::string::npos) << name << item;
        }
    }
}

TEST(ManualPage, HasTheUsualSections) {
    const std::string page = MakeManualPage(CommandTree());
    size_t last = 0;
    for (const std::string section :
         {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "ENVIRONMENT", "FILES", "EXIT STATUS", "EXAMPLES"}) {
        const size_t place = page.find("\n.Sh " + section + "\n");
        ASSERT_NE(place, std::string::npos) << section;
        EXPECT_GT(place, last) << section;
        last = place;
    }
    for (const std::string code : {"0", "1", "2", "3", "4", "5", "130"})
        EXPECT_NE(page.find("\n.It " + code + "\n"), std::string::npos) << code;
}

TEST(ManualPage, IsWithoutFaultForMandoc) {
    if (std::system("command -v mandoc >/dev/null 2>&1") != 0)  // NOLINT(cert-env33-c)
        GTEST_SKIP() << "mandoc is not installed";
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "vastrelline.1", MakeManualPage(CommandTree()));
    const std::string file = "'" + folder.Narrow("vastrelline.1") + "'";
    const std::string found = "'" + folder.Narrow("found") + "'";
    const int code = std::system(("mandoc -Tlint " + file + " > " + found + " 2>&1").c_str());  // NOLINT
    EXPECT_EQ(ReadBytes(folder.Path() / "found"), "");
    EXPECT_EQ(code, 0);
}

TEST(ManualPage, TextsAreNotTakenForRequests) {
    EXPECT_EQ(EscapeForMdoc(".Sh x"), "\\&.Sh x");
    EXPECT_EQ(EscapeForMdoc("a\\b"), "a\\eb");
    EXPECT_EQ(EscapeForMdoc("'--x'"), "\\(aq\\-\\-x\\(aq");
    EXPECT_EQ(EscapeForMdoc("plain"), "plain");
}

TEST(ManualPage, EachSentenceBeginsALine) {
    EXPECT_EQ(WrapForMdoc("One. Two\nthree.  .raw files"), "One.\nTwo three.\n\\&.raw files\n");
    EXPECT_EQ(WrapForMdoc(std::string(50, 'a') + " " + std::string(50, 'b')),
              std::string(50, 'a') + "\n" + std::string(50, 'b') + "\n");
    EXPECT_EQ(WrapForMdoc(""), "");
}

TEST(ManCommand, PrintsThePage) {
    const ToolRun run = RunTool({"man"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.report, MakeManualPage(CommandTree()));
}

}  // namespace
}  // namespace vastrelline
