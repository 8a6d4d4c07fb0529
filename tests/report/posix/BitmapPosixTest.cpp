// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "report/BackupSet.h"
#include "report/Bitmap.h"
#include "support/BackupNames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// As long as it lives, no file grows beyond `bytes`: what a disk does that is nearly full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const struct rlimit limit { bytes, before_.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handlerBefore_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    struct rlimit before_ {};
    void (*handlerBefore_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST(BitmapPosix, FullDiskLeavesWhatStoodThereAndNoHalfFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "old.bmp", "old");
    const std::vector<uint16_t> frame(64 * 64, 1000);
    int32_t isOldReplaced = -1;
    int32_t isNewMade = -1;
    {
        const FileSizeLimit limit(2000);  // headers and 14 rows
        isOldReplaced = SaveFrameBitmap(frame.data(), 64, 64, folder.Wide(L"old.bmp"));
        isNewMade = SaveFrameBitmap(frame.data(), 64, 64, folder.Wide(L"new.bmp"));
    }
    EXPECT_EQ(isOldReplaced, 0);
    EXPECT_EQ(isNewMade, 0);
    EXPECT_EQ(ReadBytes(folder.Path() / "old.bmp"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(BitmapPosix, FullDiskLeavesNoHalfBackup) {
    const TemporaryFolder folder;
    const std::vector<uint16_t> frame(64 * 64, 1000);
    {
        const FileSizeLimit limit(2000);
        WriteBackupSet(folder.Wide(L"Keep"), L"Molar", frame.data(), frame.data(), 64, 64, {2047, 4096});
    }
    ASSERT_TRUE(std::filesystem::is_directory(folder.Path() / "Keep"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path() / "Keep"));
}

TEST(BitmapPosix, FullDiskLeavesNoHalfCopyOfTheProfile) {
    const TemporaryFolder folder;
    const std::vector<uint16_t> frame(4, 1000);
    {
        const FileSizeLimit limit(2000);
        WriteCrBackupSet(folder.Wide(L"Keep"), L"Molar", std::string(5000, 'p'), frame.data(), frame.data(),
                         2, 2);
    }
    // Both raw files and the bitmap are smaller than that.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path() / "Keep"), {}), 3);
    EXPECT_THAT(MaskedNames(folder.Path() / "Keep"),
                testing::ElementsAre("T_Keep_Enhanced.bmp", "T_keep_calibrated.raw", "T_keep_enhanced.raw"));
}

}  // namespace
}  // namespace vastrelline
