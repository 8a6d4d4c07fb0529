// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "platform/Files.h"
#include "platform/MessageDialog.h"
#include "platform/WholeFile.h"
#include "platform/memory/MemoryFiles.h"

namespace vastrelline {
namespace {

constexpr size_t kAnySize = 1U << 20U;

class MemoryFilesTest : public testing::Test {
protected:
    void SetUp() override { MemoryFiles::Shared().Clear(); }
    void TearDown() override { MemoryFiles::Shared().Clear(); }

    static ReadResult Read(const std::wstring& path, std::string& bytes, size_t largestSize = kAnySize) {
        WaitBudget wait;
        return ReadWholeFile(path, largestSize, wait, bytes);
    }
    static std::string BytesOf(const std::wstring& path) {
        std::string bytes;
        return Read(path, bytes) == ReadResult::Done ? bytes : "no file";
    }
};

TEST_F(MemoryFilesTest, OneFileHasManySpellings) {
    ASSERT_TRUE(CreateFolder(L"folder"));
    ASSERT_TRUE(SaveWholeFile(L"folder\\file.txt", "bytes"));
    for (const wchar_t* path : {L"folder/file.txt", L".\\folder\\.\\file.txt", L"/folder//file.txt"})
        EXPECT_EQ(BytesOf(path), "bytes") << path;
    EXPECT_EQ(BytesOf(L"file.txt"), "no file");
}

TEST_F(MemoryFilesTest, AFolderIsMadeLevelByLevelAndOnce) {
    EXPECT_FALSE(CreateFolder(L"a/b"));
    EXPECT_TRUE(CreateFolder(L"a"));
    EXPECT_TRUE(CreateFolder(L"a/b/"));
    EXPECT_FALSE(CreateFolder(L"a\\b"));
    EXPECT_TRUE(FileExists(L"a/b"));
    EXPECT_FALSE(FileExists(L"b"));
    EXPECT_FALSE(FileExists(L""));
}

TEST_F(MemoryFilesTest, AFileNeedsItsFolderAndANameOfItsOwn) {
    EXPECT_FALSE(SaveWholeFile(L"missing/file.txt", "bytes"));
    EXPECT_FALSE(SaveWholeFile(L"", "bytes"));
    EXPECT_FALSE(SaveWholeFile(L"file/", "bytes"));
    ASSERT_TRUE(CreateFolder(L"folder"));
    EXPECT_FALSE(SaveWholeFile(L"folder", "bytes"));
    EXPECT_FALSE(OutputFile(L"folder", OpenMode::AppendExclusive).IsOpen());
    ASSERT_TRUE(SaveWholeFile(L"file", "bytes"));
    EXPECT_FALSE(CreateFolder(L"file"));
}

TEST_F(MemoryFilesTest, ReadingTellsWhatStandsThere) {
    std::string bytes;
    ASSERT_TRUE(CreateFolder(L"folder"));
    ASSERT_TRUE(SaveWholeFile(L"file", "12345"));
    EXPECT_EQ(Read(L"missing", bytes), ReadResult::Missing);
    EXPECT_EQ(Read(L"", bytes), ReadResult::Missing);
    EXPECT_EQ(Read(L"folder", bytes), ReadResult::NoFile);
    EXPECT_EQ(Read(L"file", bytes, 4), ReadResult::NoFile);
    EXPECT_EQ(Read(L"file", bytes, 5), ReadResult::Done);
    EXPECT_EQ(bytes, "12345");
}

TEST_F(MemoryFilesTest, ReplacingNeedsTheBytesThatWereRead) {
    WaitBudget wait;
    EXPECT_FALSE(ReplaceWholeFile(L"file", "", "new", wait));
    ASSERT_TRUE(SaveWholeFile(L"file", "old"));
    EXPECT_FALSE(ReplaceWholeFile(L"file", "other", "new", wait));
    EXPECT_EQ(BytesOf(L"file"), "old");
    EXPECT_TRUE(ReplaceWholeFile(L"file", "old", "new", wait));
    EXPECT_EQ(BytesOf(L"file"), "new");
    RemoveLeftover(L"file");
    EXPECT_EQ(BytesOf(L"file"), "new");
}

TEST_F(MemoryFilesTest, AnOutputFileHasOneWriterAtATime) {
    OutputFile first(L"log.txt", OpenMode::AppendExclusive);
    ASSERT_TRUE(first.IsOpen());
    EXPECT_TRUE(first.Append("one ", 4));
    EXPECT_FALSE(OutputFile(L"./log.txt", OpenMode::TruncateExclusive).IsOpen());
    EXPECT_TRUE(first.Append("two", 3));
    first.Close();
    EXPECT_FALSE(first.Append("three", 5));
    EXPECT_EQ(BytesOf(L"log.txt"), "one two");
    EXPECT_TRUE(OutputFile(L"log.txt", OpenMode::AppendExclusive).Append("!", 1));
    EXPECT_EQ(BytesOf(L"log.txt"), "one two!");
    EXPECT_TRUE(OutputFile(L"log.txt", OpenMode::TruncateExclusive).IsOpen());
    EXPECT_EQ(BytesOf(L"log.txt"), "");
}

TEST_F(MemoryFilesTest, ClearingLeavesNothing) {
    ASSERT_TRUE(CreateFolder(L"folder"));
    ASSERT_TRUE(SaveWholeFile(L"folder/file", "bytes"));
    MemoryFiles::Shared().Clear();
    EXPECT_FALSE(FileExists(L"folder"));
    EXPECT_FALSE(FileExists(L"folder/file"));
}

TEST_F(MemoryFilesTest, NoMessageReachesAnyone) {
    testing::internal::CaptureStderr();
    ShowMessage(L"text", MessageIcon::Error);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace vastrelline
