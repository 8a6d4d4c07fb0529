// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "report/LogLine.h"

namespace vastrelline {
namespace {

TEST(LogLine, BecomesTheFormattedText) {
    EXPECT_EQ(LogLine(L"plain\r\n", {}).Text(), L"plain\r\n");
    EXPECT_EQ(LogLine(L"%d: %.2lf\r\n", {7, 0.125}).Text(), L"7: 0.12\r\n");
}

}  // namespace
}  // namespace vastrelline
