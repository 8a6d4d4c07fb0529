// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "completion/ProfileCandidates.h"
#include "support/SetVariable.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(ProfileCandidates, OfWhatIsNoProfileAreNone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(ListSections("").empty());
    EXPECT_TRUE(ListSections(folder.Narrow("missing.ini")).empty());
    EXPECT_TRUE(ListSections(folder.Narrow(".")).empty());
    EXPECT_TRUE(ListSectionKeys(folder.Narrow("missing.ini"), "General").empty());
}

TEST(ProfileCandidates, ASectionsKeysAreListedOnce) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "p.ini",
               "[General]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=10\n[IP_LOWMODE]\n[Settings]\n");
    for (const std::string section : {"General", "IP_LOWMODE", "Settings"}) {
        std::set<std::string> names;
        const std::vector<Candidate> keys = ListSectionKeys(folder.Narrow("p.ini"), section);
        for (const Candidate& key : keys) EXPECT_TRUE(names.insert(key.text).second) << key.text;
        EXPECT_GT(keys.size(), 5U) << section;
    }
    EXPECT_TRUE(ListSectionKeys(folder.Narrow("p.ini"), "").empty());
}

TEST(ProfileCandidates, KnownKeysAreListedOnceAndExplained) {
    std::set<std::string> names;
    size_t explained = 0;
    for (const Candidate& key : ListKnownKeys()) {
        EXPECT_TRUE(names.insert(key.text).second) << key.text;
        if (!key.description.empty()) ++explained;
    }
    EXPECT_GT(names.size(), 100U);
    EXPECT_GT(explained, names.size() / 2);
}

TEST(ProfileCandidates, ATildeIsTheHomeFolder) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "p.ini", "[Mine]\n");
    const SetVariable home(kHomeVariable, folder.Path().string());
    const std::vector<Candidate> sections = ListSections("~/p.ini");
    ASSERT_EQ(sections.size(), 1U);
    EXPECT_EQ(sections[0].text, "Mine");
}

}  // namespace
}  // namespace vastrelline
