// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "RunGroups.h"
#include "support/SourceTree.h"

namespace vastrelline::digest {
namespace {

const std::vector<RunGroup>& Groups() {
    static const std::vector<RunGroup> groups = AllGroups();
    return groups;
}

// The keys of the table of keys, those of the fixed chain included.
std::set<std::string> DocumentedKeys() {
    std::ifstream file(SourceTreeFolder() / "docs" / "keys.toml");
    const std::regex named("^(?:name = '|    \\[')([A-Za-z0-9_]+)'.*");
    const std::regex fixedNames("^fixed = '([A-Za-z0-9_, ]+)'.*");
    std::set<std::string> keys;
    std::string head;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("[[")) head = line;
        std::smatch match;
        const bool isKey = head.find("key]]") != std::string::npos || line.starts_with("    [");
        if (isKey && std::regex_match(line, match, named)) keys.insert(match[1]);
        if (std::regex_match(line, match, fixedNames)) {
            std::istringstream names(match[1]);
            for (std::string name; names >> name;) keys.insert(name.substr(0, name.find(',')));
        }
    }
    return keys;
}

// The keys of all profiles, without their positions.
std::set<std::string> TriedKeys() {
    std::set<std::string> keys;
    for (const RunGroup& group : Groups())
        for (const DigestRun& run : group.runs) {
            std::istringstream lines(run.profile);
            for (std::string line; std::getline(lines, line);) {
                const size_t end = line.find('=');
                if (end == std::string::npos) continue;
                const bool isNumbered = end > 3 && line[2] == '_' && line[0] >= '0' && line[0] <= '9';
                keys.insert(line.substr(isNumbered ? 3 : 0, end - (isNumbered ? 3 : 0)));
            }
        }
    return keys;
}

TEST(RunGroups, TryEveryKeyThatIsDocumented) {
    const std::set<std::string> tried = TriedKeys();
    const std::set<std::string> documented = DocumentedKeys();
    EXPECT_GT(documented.size(), 100U);
    for (const std::string& key : documented) {
        if (key == "SerialId")
            continue;  // of the sensor's own profile, which lies where no program may write
        EXPECT_TRUE(tried.contains(key)) << key;
    }
}

TEST(RunGroups, HaveNamesOfTheirOwnAndRuns) {
    std::set<std::string> names;
    for (const RunGroup& group : Groups()) {
        EXPECT_TRUE(names.insert(group.name).second) << group.name;
        EXPECT_FALSE(group.runs.empty()) << group.name;
    }
}

TEST(RunGroups, CallEveryFunction) {
    std::set<ExportedFunction> called;
    bool asksForDose = false;
    for (const RunGroup& group : Groups())
        for (const DigestRun& run : group.runs) {
            called.insert(run.function);
            asksForDose |= run.asksForDose;
        }
    EXPECT_EQ(called.size(), 7U);
    EXPECT_TRUE(asksForDose);
}

// The eighth one tells of the last decision of the process: only a call that surely decides may ask it.
TEST(RunGroups, AskForTheDoseOnlyWhereTheExposureIsDecided) {
    for (const RunGroup& group : Groups())
        for (const DigestRun& run : group.runs)
            if (run.asksForDose) {
                EXPECT_TRUE(run.function == ExportedFunction::S || run.function == ExportedFunction::Ns);
                EXPECT_NE(run.profile.find("PROCMODE=3"), std::string::npos);
                EXPECT_EQ(run.mistake, Mistake::None);
            }
}

TEST(RunGroups, AreTheSameEachTime) {
    const std::vector<RunGroup> again = AllGroups();
    ASSERT_EQ(again.size(), Groups().size());
    for (size_t i = 0; i < again.size(); ++i) {
        ASSERT_EQ(again[i].runs.size(), Groups()[i].runs.size());
        for (size_t j = 0; j < again[i].runs.size(); ++j)
            EXPECT_EQ(again[i].runs[j].profile, Groups()[i].runs[j].profile) << again[i].name << ' ' << j;
    }
}

TEST(ListOf, PartsAreApartByBlanks) {
    EXPECT_EQ(ListOf(" 1  2,5 x "), (std::vector<std::string_view>{"1", "2,5", "x"}));
    EXPECT_TRUE(ListOf("").empty());
}

}  // namespace
}  // namespace vastrelline::digest
