// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "batch/LeftDrafts.h"
#include "files/OutputFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// The number of a process that has ended.
pid_t EndedProcess() {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    int status = 0;
    waitpid(child, &status, 0);
    return child;
}

TEST(LeftDrafts, GoIfTheirWriterIsGone) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "a");
    const std::string mark = ".v" + std::to_string(EndedProcess());
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
