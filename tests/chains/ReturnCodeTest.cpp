// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <stdexcept>

#include "chains/ReturnCode.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class DriverArgumentsTest : public testing::Test {
protected:
    DriverArgumentsTest() { WriteBytes(folder_.Path() / "p.ini", ""); }
    std::wstring ProfilePath() const { return folder_.Wide(L"p.ini"); }
    const TemporaryFolder& Folder() const { return folder_; }
    const uint16_t* Pixel() const { return &pixel_; }

private:
    TemporaryFolder folder_;
    uint16_t pixel_ = 0;
};

TEST_F(DriverArgumentsTest, WholeArgumentsPass) {
    EXPECT_EQ(TestDriverArguments(ProfilePath(), Pixel(), Pixel()), kSuccess);
}

TEST_F(DriverArgumentsTest, FirstHitCounts) {
    const std::wstring missing = Folder().Wide(L"missing.ini");
    EXPECT_EQ(TestDriverArguments(missing, Pixel(), Pixel()), kNoProfile);
    EXPECT_EQ(TestDriverArguments(missing, nullptr, Pixel()), kNoProfile);
    EXPECT_EQ(TestDriverArguments(missing, nullptr, nullptr), kNoProfile);
    EXPECT_EQ(TestDriverArguments(ProfilePath(), nullptr, Pixel()), kNoInput);
    EXPECT_EQ(TestDriverArguments(ProfilePath(), nullptr, nullptr), kNoInput);
    EXPECT_EQ(TestDriverArguments(ProfilePath(), Pixel(), nullptr), kNoOutput);
}

TEST_F(DriverArgumentsTest, EmptyPathIsNoProfile) {
    EXPECT_EQ(TestDriverArguments(L"", Pixel(), Pixel()), kNoProfile);
}

TEST_F(DriverArgumentsTest, FolderIsNoProfile) {
    EXPECT_EQ(TestDriverArguments(Folder().Path().wstring(), Pixel(), Pixel()), kNoProfile);
}

TEST(CountPixels, IsTheProductOfTheSides) {
    EXPECT_EQ(CountPixels(1, 1), 1);
    EXPECT_EQ(CountPixels(1300, 1668), 2168400);
    EXPECT_EQ(CountPixels(1, 536870911), 536870911);
    EXPECT_EQ(CountPixels(536870911, 1), 536870911);
}

TEST(CountPixels, RefusesFramesFrom2To29PixelsOn) {
    EXPECT_THROW(CountPixels(1, 536870912), std::length_error);
    EXPECT_THROW(CountPixels(16384, 32768), std::length_error);
    EXPECT_THROW(CountPixels(65536, 65536), std::length_error);
    EXPECT_THROW(CountPixels(INT32_MAX, 1), std::length_error);
    EXPECT_THROW(CountPixels(INT32_MAX, INT32_MAX), std::length_error);
}

}  // namespace
}  // namespace vastrelline
