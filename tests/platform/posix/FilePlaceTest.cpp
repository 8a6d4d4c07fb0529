// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/posix/FilePlace.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(FindPlace, IsTheEndOfAllLinks) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "real");
    std::filesystem::create_symlink("real/file", folder.Path() / "link");
    std::filesystem::create_symlink(folder.Path() / "link", folder.Path() / "link2");
    const FilePlace place = FindPlace(folder.Narrow("link2"));
    EXPECT_TRUE(place.folder.IsOpen());
    EXPECT_EQ(place.name, "file");
    EXPECT_FALSE(StatusAt(place.folder, place.name));
    EXPECT_EQ(errno, ENOENT);
    WriteBytes(folder.Path() / "real" / "file", "12345");
    EXPECT_EQ(StatusAt(place.folder, place.name)->st_size, 5);
}

TEST(FindPlace, FoldersAndNothingHaveNoName) {
    const TemporaryFolder folder;
    EXPECT_EQ(FindPlace(folder.Narrow("")).name, "");
    EXPECT_EQ(FindPlace("").name, "");
    EXPECT_FALSE(FindPlace(folder.Narrow("none/file")).folder.IsOpen());
}

TEST(FindPlace, ACircleEnds) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("circle", folder.Path() / "circle");
    const FilePlace place = FindPlace(folder.Narrow("circle"));
    ASSERT_TRUE(StatusAt(place.folder, place.name));
    EXPECT_TRUE(S_ISLNK(StatusAt(place.folder, place.name)->st_mode));
}

TEST(IsWritable, RegularFilesThatSomebodyMayWrite) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "x");
    const FilePlace place = FindPlace(folder.Narrow("file"));
    EXPECT_TRUE(IsWritable(place, *StatusAt(place.folder, place.name)));
    ASSERT_EQ(chmod(folder.Narrow("file").c_str(), 0444), 0);
    EXPECT_FALSE(IsWritable(place, *StatusAt(place.folder, place.name)));
    ASSERT_EQ(mkfifo(folder.Narrow("pipe").c_str(), 0600), 0);
    const FilePlace pipe = FindPlace(folder.Narrow("pipe"));
    EXPECT_FALSE(IsWritable(pipe, *StatusAt(pipe.folder, pipe.name)));
}

TEST(FlushFolder, AClosedOneDoesNoHarm) {
    FlushFolder(FileDescriptor());
    const TemporaryFolder folder;
    FlushFolder(FindPlace(folder.Narrow("file")).folder);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace vastrelline
