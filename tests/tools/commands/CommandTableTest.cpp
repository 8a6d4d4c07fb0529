// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "commands/CommandTable.h"

namespace vastrelline {
namespace {

TEST(CommandTable, NamesEachCommandOnce) {
    std::set<std::string> names;
    for (const CommandEntry& entry : CommandTable())
        EXPECT_TRUE(names.insert(std::string(entry.group) + " " + std::string(entry.name)).second)
            << entry.name;
    EXPECT_GE(names.size(), 3U);
}

TEST(CommandTable, EveryGroupIsIntroduced) {
    for (const CommandEntry& entry : CommandTable()) {
        const std::span<const CommandGroup> groups = CommandGroups();
        EXPECT_TRUE(entry.group.empty() ||
                    std::any_of(groups.begin(), groups.end(),
                                [&](const CommandGroup& group) { return group.name == entry.group; }))
            << entry.group;
    }
}

TEST(CommandTable, SummariesAreShortAndExamplesCanBeCopied) {
    for (const CommandEntry& entry : CommandTable()) {
        SCOPED_TRACE(entry.name);
        EXPECT_FALSE(entry.summary.empty());
        EXPECT_LE(entry.summary.size(), 60U);
        EXPECT_FALSE(entry.summary.ends_with('.'));
        const std::unique_ptr<Command> command = entry.make();
        const std::string examples = "\n" + std::string(command->Examples());
        const std::string start = "\n  vastrelline " +
                                  (entry.group.empty() ? "" : std::string(entry.group) + " ") +
                                  std::string(entry.name);
        size_t count = 0;
        for (size_t at = examples.find(start); at != std::string::npos; at = examples.find(start, at + 1))
            ++count;
        EXPECT_EQ(count, 3U) << examples;
        EXPECT_TRUE(examples.ends_with('\n'));
        for (size_t at = 0; at < examples.size();) {
            const size_t end = examples.find('\n', at);
            EXPECT_LE(end - at, 110U) << examples.substr(at, end - at);
            at = end + 1;
        }
        const std::string_view notes = command->Notes();
        EXPECT_TRUE(notes.empty() || notes.ends_with('\n'));
    }
}

}  // namespace
}  // namespace vastrelline
