// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "platform/Files.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(FileExists, FilesAndFoldersAreFound) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "x");
    EXPECT_TRUE(FileExists(folder.Wide(L"file")));
    EXPECT_TRUE(FileExists(folder.Path().wstring()));
    EXPECT_FALSE(FileExists(folder.Wide(L"none")));
    EXPECT_FALSE(FileExists(folder.Wide(L"none\\file")));
    EXPECT_FALSE(FileExists(L""));
}

TEST(OutputFile, OneThatDidNotOpenWritesNothing) {
    OutputFile file(L"", OpenMode::AppendExclusive);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(file.Append("x", 1));
    file.Close();
    EXPECT_FALSE(file.IsOpen());
}

TEST(OutputFile, AppendModeMakesTheFileAndKeepsItsContent) {
    const TemporaryFolder folder;
    for (const char* text : {"one", "two"}) {
        OutputFile file(folder.Wide(L"log"), OpenMode::AppendExclusive);
        ASSERT_TRUE(file.IsOpen());
        EXPECT_TRUE(file.Append(text, 3));
    }
    EXPECT_EQ(ReadBytes(folder.Path() / "log"), "onetwo");
}

TEST(OutputFile, TruncateModeDropsTheContent) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "log", "a longer text");
    OutputFile file(folder.Wide(L"log"), OpenMode::TruncateExclusive);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_TRUE(file.Append("ab", 2));
    EXPECT_TRUE(file.Append("", 0));
    EXPECT_TRUE(file.Append("c", 1));
    file.Close();
    EXPECT_EQ(ReadBytes(folder.Path() / "log"), "abc");
}

TEST(OutputFile, ASecondOpenerFailsAndHarmsNothing) {
    const TemporaryFolder folder;
    OutputFile first(folder.Wide(L"log"), OpenMode::AppendExclusive);
    ASSERT_TRUE(first.Append("kept", 4));
    EXPECT_FALSE(OutputFile(folder.Wide(L"log"), OpenMode::AppendExclusive).IsOpen());
    EXPECT_FALSE(OutputFile(folder.Wide(L"log"), OpenMode::TruncateExclusive).IsOpen());
    first.Close();
    EXPECT_EQ(ReadBytes(folder.Path() / "log"), "kept");
    EXPECT_TRUE(OutputFile(folder.Wide(L"log"), OpenMode::AppendExclusive).IsOpen());
}

TEST(OutputFile, AMissingFolderOrAFolderAsPathGivesNoFile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(OutputFile(folder.Wide(L"none\\log"), OpenMode::AppendExclusive).IsOpen());
    EXPECT_FALSE(OutputFile(folder.Path().wstring(), OpenMode::TruncateExclusive).IsOpen());
    EXPECT_FALSE(OutputFile(L"", OpenMode::AppendExclusive).IsOpen());
}

TEST(CreateFolder, MakesOneLevel) {
    const TemporaryFolder folder;
    EXPECT_FALSE(CreateFolder(folder.Wide(L"a\\b")));
    EXPECT_TRUE(CreateFolder(folder.Wide(L"a")));
    EXPECT_TRUE(CreateFolder(folder.Wide(L"a\\b")));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "a" / "b"));
    EXPECT_FALSE(CreateFolder(folder.Wide(L"a")));  // there already
}

}  // namespace
}  // namespace vastrelline
