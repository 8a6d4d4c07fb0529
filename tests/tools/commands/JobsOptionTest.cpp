// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "commands/JobsOption.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

TEST(JobsOption, IsAtLeastOneAndWhatTheLineSays) {
    CLI::App command;
    size_t jobs = 0;
    AddJobsOption(command, "Workers", jobs);
    EXPECT_GE(jobs, 1U);
    EXPECT_NO_THROW(TestJobs(jobs));
    command.parse("--jobs 7");
    EXPECT_EQ(jobs, 7U);
}

TEST(JobsOption, HasBounds) {
    EXPECT_THROW(TestJobs(0), UsageError);
    EXPECT_NO_THROW(TestJobs(256));
    EXPECT_THROW(TestJobs(257), UsageError);
}

}  // namespace
}  // namespace vastrelline
