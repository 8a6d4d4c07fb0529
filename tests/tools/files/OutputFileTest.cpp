// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>

#include "files/OutputFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

ptrdiff_t FilesIn(const TemporaryFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
}

void WriteFile(const std::string& path, bool mayReplace) {
    OutputFile file(path, mayReplace);
    file.Write({'n', 'e', 'w'});
    file.Publish();
}

TEST(OutputFile, AppearsWhenItIsPublished) {
    const TemporaryFolder folder;
    OutputFile file(folder.Narrow("a.raw"), false);
    file.Write({'a', 'b'});
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a.raw"));
    file.Publish();
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "ab");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(OutputFile, LeavesNothingIfItIsNotPublished) {
    const TemporaryFolder folder;
    {
        OutputFile file(folder.Narrow("a.raw"), false);
        file.Write({'a', 'b'});
        EXPECT_EQ(FilesIn(folder), 1);
    }
    EXPECT_EQ(FilesIn(folder), 0);
}

TEST(OutputFile, KeepsTheOldFileIfItIsNotPublished) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "old");
    {
        OutputFile file(folder.Narrow("a.raw"), true);
        file.Write({'a', 'b'});
    }
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "old");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(OutputFile, ReplacesOnlyIfItMay) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "old");
    EXPECT_THROW(WriteFile(folder.Narrow("a.raw"), false), std::runtime_error);
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "old");
    WriteFile(folder.Narrow("a.raw"), true);
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "new");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(OutputFile, DoesNotReplaceAFileThatCameUpMeanwhile) {
    const TemporaryFolder folder;
    {
        OutputFile file(folder.Narrow("a.raw"), false);
        WriteBytes(folder.Path() / "a.raw", "old");
        EXPECT_THROW(file.Publish(), std::runtime_error);
    }
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "old");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(OutputFile, FollowsASymbolicLink) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "target.raw", "old");
    std::filesystem::create_symlink("target.raw", folder.Path() / "link.raw");
    EXPECT_THROW(WriteFile(folder.Narrow("link.raw"), false), std::runtime_error);
    WriteFile(folder.Narrow("link.raw"), true);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link.raw"));
    EXPECT_EQ(ReadBytes(folder.Path() / "target.raw"), "new");
}

TEST(OutputFile, KeepsTheModeOfTheFileItReplaces) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "old");
    using std::filesystem::perms;
    std::filesystem::permissions(folder.Path() / "a.raw", perms::owner_read | perms::owner_write);
    WriteFile(folder.Narrow("a.raw"), true);
    EXPECT_EQ(std::filesystem::status(folder.Path() / "a.raw").permissions(),
              perms::owner_read | perms::owner_write);
}

TEST(OutputFile, TheDraftLiesBesideWithTheSameEnding) {
    const TemporaryFolder folder;
    const OutputFile file(folder.Narrow("a.bmp"), false);
    EXPECT_EQ(std::filesystem::path(file.DraftPath()).parent_path(), folder.Path());
    EXPECT_EQ(std::filesystem::path(file.DraftPath()).extension(), ".bmp");
}

TEST(OutputFile, WhatCannotBeAFileIsRefusedEvenWithForce) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "a.raw");
    for (const std::string& path :
         {std::string(), folder.Narrow("a.raw"), folder.Narrow(""), folder.Narrow("missing/a.raw"),
          folder.Narrow("a.raw/"), std::string("/dev/null")})
        EXPECT_THROW(WriteFile(path, true), std::runtime_error) << path;
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(OutputFile, ADraftTellsWhoWritesIt) {
    const TemporaryFolder folder;
    const OutputFile file(folder.Narrow("a.bmp"), false);
    EXPECT_EQ(WriterOfDraft(std::filesystem::path(file.DraftPath()).filename().string()), OwnProcessNumber());
    EXPECT_EQ(WriterOfDraft(".v12-3"), 12);
    // Somebody else's numbers: no process has one of more than 32 bits.
    for (const char* const leaf :
         {"", ".v", ".v12", ".v12-", ".v12-.png", ".v12-x.png", ".v-1-2.png", ".v0-1", ".vx-1", "v12-3.png",
          ".v20261123120000-1.png", ".v4294967296-1.png"})
        EXPECT_EQ(WriterOfDraft(leaf), std::nullopt) << leaf;
}

}  // namespace
}  // namespace vastrelline
