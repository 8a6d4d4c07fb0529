// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "files/WholeWrite.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

TEST(WholeWrite, MakesAndReplacesAFile) {
    const TemporaryFolder folder;
    WriteWhole(folder.Narrow("a"), "one\0two"s);
    EXPECT_EQ(ReadBytes(folder.Path() / "a"), "one\0two"s);
    WriteWhole(folder.Narrow("a"), "");
    EXPECT_EQ(ReadBytes(folder.Path() / "a"), "");
}

TEST(WholeWrite, FailsWhereThereIsNoFolder) {
    const TemporaryFolder folder;
    EXPECT_THROW(WriteWhole(folder.Narrow("missing/a"), "x"), OutputError);
}

}  // namespace
}  // namespace vastrelline
