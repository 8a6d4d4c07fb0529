// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#include "platform/NameBeside.h"
#include "platform/WholeFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

class WholeFileTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    }

private:
    TemporaryFolder folder_;
};

TEST_F(WholeFileTest, BytesAreStoredAsTheyAre) {
    const std::string bytes = "a\0\r\n\x1A\xFF"s;
    EXPECT_TRUE(SaveWholeFile(Wide(L"file"), bytes));
    EXPECT_EQ(ReadBytes(At("file")), bytes);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, NoBytesMakeAnEmptyFile) {
    WriteBytes(At("old"), "old");
    EXPECT_TRUE(SaveWholeFile(Wide(L"new"), ""));
    EXPECT_TRUE(SaveWholeFile(Wide(L"old"), ""));
    EXPECT_EQ(ReadBytes(At("new")), "");
    EXPECT_EQ(ReadBytes(At("old")), "");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(WholeFileTest, LongerAndShorterFilesReplaceTheOldOne) {
    for (const size_t count : {size_t{10}, size_t{5000000}, size_t{3}}) {
        const std::string bytes(count, 'x');
        EXPECT_TRUE(SaveWholeFile(Wide(L"file"), bytes));
        EXPECT_EQ(ReadBytes(At("file")), bytes);
    }
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, EitherSeparatorLeadsToTheFile) {
    std::filesystem::create_directory(At("in"));
    EXPECT_TRUE(SaveWholeFile(Wide(L"in\\one"), "1"));
    EXPECT_TRUE(SaveWholeFile(Wide(L"in/two"), "2"));
    EXPECT_EQ(ReadBytes(At("in") / "one"), "1");
    EXPECT_EQ(ReadBytes(At("in") / "two"), "2");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, NameAloneLiesInTheCurrentFolder) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(At(""));
    const bool isSaved = SaveWholeFile(L"file", "here");
    std::filesystem::current_path(before);
    EXPECT_TRUE(isSaved);
    EXPECT_EQ(ReadBytes(At("file")), "here");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, MissingFolderIsNotMade) {
    EXPECT_FALSE(SaveWholeFile(Wide(L"missing\\file"), "x"));
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(WholeFileTest, FolderAsThePathStays) {
    std::filesystem::create_directory(At("folder"));
    EXPECT_FALSE(SaveWholeFile(Wide(L"folder"), "x"));
    EXPECT_FALSE(SaveWholeFile(Wide(L"folder\\"), "x"));
    EXPECT_FALSE(SaveWholeFile(L"", "x"));
    EXPECT_TRUE(std::filesystem::is_empty(At("folder")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, FileInThePlaceOfAFolderStays) {
    WriteBytes(At("file"), "old");
    EXPECT_FALSE(SaveWholeFile(Wide(L"file\\below"), "x"));
    EXPECT_EQ(ReadBytes(At("file")), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, FileThatMayNotBeWrittenStays) {
    WriteBytes(At("file"), "old");
    std::filesystem::permissions(At("file"), std::filesystem::perms::owner_read);
    EXPECT_FALSE(SaveWholeFile(Wide(L"file"), "new"));
    EXPECT_EQ(ReadBytes(At("file")), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, AFileThatAViewerHoldsIsWrittenAsItStands) {
    for (const char* const bytes : {"new", "a longer one than before"}) {
        WriteBytes(At("file"), "an old text");
        // As a viewer has it open for reading.
        std::FILE* const viewer = std::fopen(At("file").string().c_str(), "rb");
        ASSERT_NE(viewer, nullptr);
        EXPECT_TRUE(SaveWholeFile(Wide(L"file"), bytes));
        std::fclose(viewer);
        EXPECT_EQ(ReadBytes(At("file")), bytes);
        EXPECT_EQ(CountFiles(), 1);
    }
}

TEST_F(WholeFileTest, AllNamesOfAFileShowTheNewBytes) {
    WriteBytes(At("file"), "an old text");
    std::error_code error;
    std::filesystem::create_hard_link(At("file"), At("other"), error);
    if (error) GTEST_SKIP() << "no second names on this file system";
    EXPECT_TRUE(SaveWholeFile(Wide(L"file"), "new"));
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(ReadBytes(At("other")), "new");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(WholeFileTest, TheNullDeviceTakesEverything) {
#ifdef _WIN32
    EXPECT_TRUE(SaveWholeFile(L"NUL", "gone"));
#else
    EXPECT_TRUE(SaveWholeFile(L"/dev/null", "gone"));
#endif
}

constexpr size_t kNoLimit = size_t{1} << 30U;

// What reading gives; the bytes if there are any, or else the kind of failure.
std::string Read(const std::wstring& path, size_t largestSize = kNoLimit) {
    WaitBudget wait;
    std::string bytes;
    switch (ReadWholeFile(path, largestSize, wait, bytes)) {
        case ReadResult::Done:
            return bytes;
        case ReadResult::Missing:
            return "missing";
        case ReadResult::NoFile:
            return "no file";
        case ReadResult::Failed:
            break;
    }
    return "failed";
}

TEST_F(WholeFileTest, ReadsAllBytes) {
    const std::string bytes = "a\0\r\n\x1A\xFF"s;
    WriteBytes(At("file"), bytes);
    WriteBytes(At("empty"), "");
    WriteBytes(At("large"), std::string(3000000, 'x'));
    EXPECT_EQ(Read(Wide(L"file")), bytes);
    EXPECT_EQ(Read(Wide(L"empty")), "");
    EXPECT_EQ(Read(Wide(L"large")), std::string(3000000, 'x'));
}

TEST_F(WholeFileTest, WhatCannotBeThereIsMissing) {
    WriteBytes(At("file"), "x");
    EXPECT_EQ(Read(Wide(L"none")), "missing");
    EXPECT_EQ(Read(Wide(L"none\\file")), "missing");
    EXPECT_EQ(Read(Wide(L"file\\file")), "missing");
    EXPECT_EQ(Read(Wide(std::wstring(300, L'x'))), "missing");
    EXPECT_EQ(Read(L""), "missing");
}

TEST_F(WholeFileTest, AFolderIsNoFile) {
    std::filesystem::create_directory(At("folder"));
    EXPECT_EQ(Read(Wide(L"folder")), "no file");
}

TEST_F(WholeFileTest, LargerThanAllowedIsNoFile) {
    WriteBytes(At("file"), "12345");
    EXPECT_EQ(Read(Wide(L"file"), 5), "12345");
    EXPECT_EQ(Read(Wide(L"file"), 4), "no file");
}

TEST_F(WholeFileTest, WithoutBudgetTheFreshFileCounts) {
    WriteBytes(At("file"), "fresh");
    WaitBudget none(std::chrono::milliseconds(0));
    std::string bytes;
    EXPECT_EQ(ReadWholeFile(Wide(L"file"), kNoLimit, none, bytes), ReadResult::Done);
    EXPECT_EQ(bytes, "fresh");
}

// A budget for tests that no other program disturbs: spent only if the machine stands still.
WaitBudget LongBudget() { return WaitBudget(std::chrono::minutes(1)); }

TEST_F(WholeFileTest, ReplacesTheBytesThatWereRead) {
    WriteBytes(At("file"), "old");
    WaitBudget wait = LongBudget();
    EXPECT_TRUE(ReplaceWholeFile(Wide(L"file"), "old", "new bytes", wait));
    EXPECT_EQ(ReadBytes(At("file")), "new bytes");
    EXPECT_TRUE(ReplaceWholeFile(Wide(L"file"), "new bytes", "", wait));
    EXPECT_EQ(ReadBytes(At("file")), "");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, OtherBytesThanThoseReadStay) {
    WaitBudget wait = LongBudget();
    for (const char* const changed : {"", "ol", "olD", "older"}) {
        WriteBytes(At("file"), changed);
        EXPECT_FALSE(ReplaceWholeFile(Wide(L"file"), "old", "new", wait));
        EXPECT_EQ(ReadBytes(At("file")), changed);
    }
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, WhatCannotBeReplacedStays) {
    std::filesystem::create_directory(At("folder"));
    WriteBytes(At("file"), "old");
    std::filesystem::permissions(At("file"), std::filesystem::perms::owner_read);
    WaitBudget wait = LongBudget();
    EXPECT_FALSE(ReplaceWholeFile(Wide(L"file"), "old", "new", wait));
    EXPECT_FALSE(ReplaceWholeFile(Wide(L"none"), "", "new", wait));
    EXPECT_FALSE(ReplaceWholeFile(Wide(L"none\\file"), "", "new", wait));
    EXPECT_FALSE(ReplaceWholeFile(Wide(L"folder"), "", "new", wait));
    EXPECT_FALSE(ReplaceWholeFile(L"", "", "new", wait));
    EXPECT_EQ(ReadBytes(At("file")), "old");
    EXPECT_TRUE(std::filesystem::is_empty(At("folder")));
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(WholeFileTest, AFreshFileIsNotReplacedWithoutBudget) {
    // On a busy machine one file may be old before it is looked at, but not all of them.
    bool isKept = false;
    for (int i = 0; i < 1000 && !isKept; ++i) {
        WriteBytes(At("file"), "old");
        WaitBudget none(std::chrono::milliseconds(0));
        isKept = !ReplaceWholeFile(Wide(L"file"), "old", "new", none);
    }
    EXPECT_TRUE(isKept);
    EXPECT_EQ(ReadBytes(At("file")), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(WholeFileTest, OwnVersionsNeedNoBudget) {
    WriteBytes(At("file"), "0");
    WaitBudget wait = LongBudget();
    ASSERT_TRUE(ReplaceWholeFile(Wide(L"file"), "0", "1", wait));
    for (int i = 1; i < 20; ++i) {
        WaitBudget none(std::chrono::milliseconds(0));
        EXPECT_TRUE(ReplaceWholeFile(Wide(L"file"), std::to_string(i), std::to_string(i + 1), none));
    }
    EXPECT_EQ(ReadBytes(At("file")), "20");
}

TEST_F(WholeFileTest, LeftoversGoWithTheNextSave) {
    const auto wide = [](const std::string& name) { return std::wstring(name.begin(), name.end()); };
    for (const std::string name : {"file", "Vastrelline.ini", "a longer name of a profile.ini"}) {
        const std::string beside = NameBeside(HashName(name), name.size());
        WriteBytes(At(name), "old");
        WriteBytes(At(beside), "left");
        RemoveLeftover(Wide(wide(name)));
        EXPECT_EQ(CountFiles(), 1);
        WriteBytes(At(beside), "left");
        WaitBudget wait = LongBudget();
        EXPECT_TRUE(ReplaceWholeFile(Wide(wide(name)), "old", "new", wait));
        EXPECT_EQ(CountFiles(), 1);
        WriteBytes(At(beside), "left");
        EXPECT_TRUE(SaveWholeFile(Wide(wide(name)), "saved"));
        EXPECT_EQ(ReadBytes(At(name)), "saved");
        EXPECT_EQ(CountFiles(), 1);
        std::filesystem::remove(At(name));
    }
    RemoveLeftover(Wide(L"none\\file"));
    RemoveLeftover(L"");
}

}  // namespace
}  // namespace vastrelline
