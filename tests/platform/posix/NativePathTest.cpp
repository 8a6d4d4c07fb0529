// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "platform/Text.h"
#include "platform/posix/NativePath.h"

namespace vastrelline {
namespace {

TEST(NativePath, BackslashesBecomeSlashes) {
    EXPECT_EQ(NativePath(L"/a\\b/c.ini"), "/a/b/c.ini");
    EXPECT_EQ(NativePath(L""), "");
}

TEST(NativePath, BytesThatAreNoUtf8ComeBack) {
    const char* const path = "/a/\xE9t\xC3\xA9\xFF.ini";
    EXPECT_EQ(NativePath(WidenThreadText(path)), path);
    EXPECT_EQ(NativePath(WidenUtf8Text(path)), path);
}

}  // namespace
}  // namespace vastrelline
