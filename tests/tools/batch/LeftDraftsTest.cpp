// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "batch/LeftDrafts.h"
#include "files/OutputFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// No system gives a process so large a number.
constexpr ProcessNumber kNobody = 2147483645;

TEST(LeftDrafts, GoIfTheirWriterIsGone) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "a");
    const std::string mark = ".v" + std::to_string(kNobody);
    for (const std::string& leaf :
         {mark + "-0.png", "a/" + mark + "-12", mark + "-0x.png", std::string("x.png"), mark})
        WriteBytes(folder.Path() / leaf, "x");
    const OutputFile own(folder.Narrow("y.png"), false);
    EXPECT_EQ(RemoveLeftDrafts(folder.Path().string()), 2U);
    EXPECT_TRUE(std::filesystem::exists(own.DraftPath())) << "its writer lives";
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / (mark + "-0.png")));
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "x.png"));
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / (mark + "-0x.png"))) << "no name of a draft";
    EXPECT_EQ(RemoveLeftDrafts(folder.Narrow("missing")), 0U);
}

}  // namespace
}  // namespace vastrelline
