// SPDX-License-Identifier: Apache-2.0

// Profiles that are there and cannot be read: never another chain's picture with code 0.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

class UnreadableFilesTest : public testing::TestWithParam<ProcessingExport> {
protected:
    UnreadableFilesTest() {
        ProfileFolder::PlainSection()
            .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
            .WriteTo(folder_.At("profile.ini"));
    }

    int32_t Run(const std::string& profile) {
        input_ = Ramp(8, 6, 100, 50, 70);
        output_ = Flat(8, 6, 7);
        const std::string bitmap = folder_.Narrow("picture.bmp");
        return GetParam().call(
            {input_.Data(), output_.Data(), 8, 6, profile.c_str(), "General", 0, bitmap.c_str()});
    }
    int32_t Run() { return Run(folder_.Profile()); }

    // Neither the frame nor a file has changed.
    void ExpectUntouched() const {
        EXPECT_THAT(input_, EqualsFrame(Ramp(8, 6, 100, 50, 70)));
        EXPECT_THAT(output_, EqualsFrame(Flat(8, 6, 7)));
        EXPECT_FALSE(std::filesystem::exists(folder_.At("picture.bmp")));
    }
    bool ReadsSensorProfiles() const { return GetParam().name != "ImageProcessingCR"; }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
    Frame input_ = Flat(8, 6, 0);
    Frame output_ = Flat(8, 6, 0);
};

// Takes all file handles that a process may have, but for as many as are left.
class NoFileHandles {
public:
    explicit NoFileHandles(int left) {
        getrlimit(RLIMIT_NOFILE, &before_);
        rlimit few = before_;
        few.rlim_cur = 64;
        setrlimit(RLIMIT_NOFILE, &few);
        for (int file = open("/dev/null", O_RDONLY); file >= 0; file = open("/dev/null", O_RDONLY))
            taken_.push_back(file);
        for (int i = 0; i < left; ++i) {
            close(taken_.back());
            taken_.pop_back();
        }
    }
    ~NoFileHandles() {
        for (const int file : taken_) close(file);
        setrlimit(RLIMIT_NOFILE, &before_);
    }
    NoFileHandles(const NoFileHandles&) = delete;
    NoFileHandles& operator=(const NoFileHandles&) = delete;

private:
    rlimit before_{};
    std::vector<int> taken_;
};

TEST_P(UnreadableFilesTest, APipeAFolderOrADeviceIsNoProfile) {
    ASSERT_EQ(mkfifo(Folder().Narrow("pipe.ini").c_str(), 0600), 0);
    EXPECT_EQ(Run(Folder().Narrow("pipe.ini")), VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(Run(Folder().Narrow("")), VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(Run("/dev/null"), VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(Run("/dev/zero"), VASTRELLINE_NO_PROFILE);
    EXPECT_FALSE(std::filesystem::exists(Folder().At("picture.bmp")));
}

TEST_P(UnreadableFilesTest, AProfileWithoutPermissionIsNone) {
    ASSERT_EQ(chmod(Folder().Profile().c_str(), 0), 0);
    const bool isAllowedAll = geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (isAllowedAll) {
        ASSERT_EQ(chmod(Folder().Narrow("").c_str(), 0755), 0);
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    const int32_t code = Run();
    if (isAllowedAll) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(code, VASTRELLINE_NO_PROFILE);
    EXPECT_FALSE(std::filesystem::exists(Folder().At("picture.bmp")));
}

TEST_P(UnreadableFilesTest, WithoutAFreeFileHandleTheCallFails) {
    int32_t code = VASTRELLINE_OK;
    {
        const NoFileHandles handles(0);
        code = Run();
    }
    EXPECT_EQ(code, VASTRELLINE_INTERNAL_FAILURE);
    ExpectUntouched();
    EXPECT_EQ(Run(), VASTRELLINE_OK);
}

TEST_P(UnreadableFilesTest, ASensorProfileThatCannotBeReadFailsTheCallsThatNeedIt) {
    std::filesystem::create_directories(Folder().Sensor().PlainFile());
    EXPECT_EQ(Run(), ReadsSensorProfiles() ? VASTRELLINE_INTERNAL_FAILURE : VASTRELLINE_OK);
}

INSTANTIATE_TEST_SUITE_P(Exports, UnreadableFilesTest, testing::ValuesIn(ProcessingExports()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
