// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "platform/JournalFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

std::string ReadFrom(const JournalFile& file, uint64_t place) {
    std::array<char, 64> bytes{};
    size_t count = 0;
    EXPECT_FALSE(file.Read(place, bytes, count));
    return {bytes.data(), count};
}

TEST(JournalFile, GrowsAtItsEnd) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "journal", "old\n");
    JournalFile file;
    ASSERT_FALSE(file.Open(folder.Narrow("journal")));
    EXPECT_EQ(ReadFrom(file, 0), "old\n");
    ASSERT_FALSE(file.Append("new\n"));
    EXPECT_EQ(ReadFrom(file, 0), "old\nnew\n");
    EXPECT_EQ(ReadFrom(file, 5), "ew\n");
    EXPECT_EQ(ReadFrom(file, 8), "");
    EXPECT_EQ(ReadFrom(file, 1000), "");
}

TEST(JournalFile, IsHeldByOneAndReadByAll) {
    const TemporaryFolder folder;
    JournalFile second;
    {
        JournalFile first;
        ASSERT_FALSE(first.Open(folder.Narrow("journal")));
        ASSERT_FALSE(first.Hold());
        ASSERT_FALSE(second.Open(folder.Narrow("journal")));
        EXPECT_EQ(second.Hold(), std::errc::resource_unavailable_try_again);
        ASSERT_FALSE(first.Append("x"));
        EXPECT_EQ(ReadBytes(folder.Path() / "journal"), "x");
        EXPECT_EQ(ReadFrom(second, 0), "x");
    }
    EXPECT_FALSE(second.Hold());
}

TEST(JournalFile, InAMissingFolderIsAnError) {
    const TemporaryFolder folder;
    JournalFile file;
    EXPECT_EQ(file.Open(folder.Narrow("missing") + "/journal"), std::errc::no_such_file_or_directory);
}

}  // namespace
}  // namespace vastrelline
