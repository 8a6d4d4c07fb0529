// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "runs/PrivateProfile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(PrivateProfile, IsACopyWithEditsAndLeavesTheOriginalAlone) {
    const TemporaryFolder folder;
    const std::string text = "; words\r\n[A]\r\nKEY=1 \r\n[B]\r\nKEY=2\r\n";
    WriteBytes(folder.Path() / "p.ini", text);
    const ProfileFile original = ProfileFile::Read(folder.Narrow("p.ini"));
    std::string path;
    {
        const std::vector<KeyEdit> edits{{"KEY", "3"}, {"MORE", "x y"}};
        const PrivateProfile copy(original, "b", edits);
        path = copy.Path();
        EXPECT_EQ(std::filesystem::path(path).filename(), "p.ini");
        EXPECT_EQ(ReadBytes(path), "; words\r\n[A]\r\nKEY=1 \r\n[B]\r\nKEY=3\r\nMORE=x y\r\n");
        EXPECT_EQ(copy.ReadLog(), "");
        WriteBytes(std::filesystem::path(path).parent_path() / "ExtraOralLog.txt", "log");
        EXPECT_EQ(copy.ReadLog(), "log");
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(ReadBytes(folder.Path() / "p.ini"), text);
}

TEST(PrivateProfile, LeavesOutWhatCouldNotBeReadBack) {
    const ProfileFile original("p.ini", "[A]\nKEY=1\n");
    const std::vector<KeyEdit> edits{{"KEY", "1\n2"}};
    const PrivateProfile copy(original, "A", edits);
    EXPECT_EQ(ReadBytes(copy.Path()), "[A]\nKEY=1\n");
}

TEST(PrivateProfile, HasAnotherNameThanTheLogAndNoSeparatorInIt) {
    for (const char* path : {"ExtraOralLog.txt", "/a/b\\c.ini", ""}) {
        const PrivateProfile copy(ProfileFile(path, "[A]\nKEY=1\n"), "A", {});
        EXPECT_EQ(std::filesystem::path(copy.Path()).filename(), "profile.ini") << path;
        EXPECT_EQ(copy.ReadLog(), "");
    }
}

TEST(ReadLogBeside, IsEmptyWithoutALog) {
    const TemporaryFolder folder;
    EXPECT_EQ(ReadLogBeside(folder.Narrow("p.ini")), "");
    WriteBytes(folder.Path() / "ExtraOralLog.txt", "words");
    EXPECT_EQ(ReadLogBeside(folder.Narrow("p.ini")), "words");
}

}  // namespace
}  // namespace vastrelline
