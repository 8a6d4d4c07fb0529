// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "ToolRun.h"
#include "commands/ProfileNewCommand.h"
#include "profile/SampleProfiles.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

ToolRun New(std::vector<std::string> words) {
    words.insert(words.begin(), {"profile", "new"});
    return RunTool(words, MustNotBeCalled);
}

TEST(ProfileNew, WritesTheSamplesOfTheTree) {
    const TemporaryFolder folder;
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(SourceTreeFolder() / "profiles")) {
        if (entry.path().extension() != ".ini") continue;
        ++count;
        const std::string name = entry.path().stem().string();
        const std::string out = folder.Narrow(name + ".ini");
        EXPECT_EQ(New({"--sample", name, "--out", out}).exitCode, 0) << name;
        EXPECT_EQ(ReadBytes(out), ReadBytes(entry.path())) << name;
    }
    EXPECT_EQ(SampleProfiles().size(), count);
}

TEST(ProfileNew, BeginsWithTheSmallestAndTellsItsSections) {
    const TemporaryFolder folder;
    const ToolRun run = New({"--out", folder.Narrow("a.ini")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.report, folder.Narrow("a.ini") + ": sections General\n");
}

TEST(ProfileNew, ReplacesNothingUnlessForced) {
    const TemporaryFolder folder;
    const std::string out = folder.Narrow("a.ini");
    std::ofstream(out) << "mine";
    EXPECT_EQ(New({"--out", out}).exitCode, 5);
    EXPECT_EQ(ReadBytes(out), "mine");
    EXPECT_EQ(New({"--out", out, "--force"}).exitCode, 0);
    EXPECT_NE(ReadBytes(out), "mine");
}

TEST(ProfileNew, AsksWhichSampleIsMeant) {
    const TemporaryFolder folder;
    const ToolRun run = New({"--sample", "dentl", "--out", folder.Narrow("a.ini")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("did you mean 'dental'?"));
    EXPECT_FALSE(std::filesystem::exists(folder.Narrow("a.ini")));
}

}  // namespace
}  // namespace vastrelline
