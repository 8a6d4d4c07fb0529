// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "platform/PathText.h"

namespace vastrelline {
namespace {

TEST(PathText, FoldsNamesAsTheSystemTakesThem) {
    EXPECT_EQ(FoldName("a/b.png"), FoldName("a/b.png"));
    EXPECT_NE(FoldName("a"), FoldName("b"));
#ifdef _WIN32
    EXPECT_EQ(FoldName("Scans/T\u00E4.PNG"), FoldName("scans\\t\u00C4.png"));
#else
    EXPECT_EQ(FoldName("Scans/T\u00E4.PNG"), "Scans/T\u00E4.PNG");
#endif
}

}  // namespace
}  // namespace vastrelline
