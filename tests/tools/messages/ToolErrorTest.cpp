// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

TEST(ToolError, IsOneLineOfThreeParts) {
    const InputError error("frame.raw", "4 bytes fit no size", "say --size WxH");
    EXPECT_STREQ(error.what(), "frame.raw: 4 bytes fit no size; say --size WxH");
    EXPECT_EQ(error.Code(), ExitCode::Input);
    EXPECT_EQ(error.Where(), "frame.raw");
    EXPECT_EQ(error.What(), "4 bytes fit no size");
    EXPECT_EQ(error.Remedy(), "say --size WxH");
}

TEST(ToolError, LeavesOutWhatIsNotKnown) {
    EXPECT_STREQ(InputError("a", "is gone").what(), "a: is gone");
    EXPECT_STREQ(UsageError("no").what(), "no");
}

TEST(ToolError, HasTheCodeOfItsKind) {
    EXPECT_EQ(UsageError("a").Code(), ExitCode::WrongUse);
    EXPECT_EQ(ProcessingError("a", "b").Code(), ExitCode::Processing);
    EXPECT_EQ(OutputError("a", "b").Code(), ExitCode::Output);
}

}  // namespace
}  // namespace vastrelline
