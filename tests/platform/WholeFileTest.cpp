#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>

#include "platform/Files.h"
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

}  // namespace
}  // namespace vastrelline
