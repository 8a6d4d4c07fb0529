// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "completion/ShellQuote.h"

namespace vastrelline {
namespace {

TEST(QuoteForShell, LeavesPlainWordsAlone) {
    EXPECT_EQ(QuoteForShell("--tolerance=2"), "--tolerance=2");
    EXPECT_EQ(QuoteForShell("scans/a_1300x1668.raw"), "scans/a_1300x1668.raw");
}

TEST(QuoteForShell, QuotesWhatAShellWouldTake) {
    EXPECT_EQ(QuoteForShell(""), "''");
    EXPECT_EQ(QuoteForShell("my frame.raw"), "'my frame.raw'");
    EXPECT_EQ(QuoteForShell("$HOME;`id`*"), "'$HOME;`id`*'");
    EXPECT_EQ(QuoteForShell("it's"), "'it'\\''s'");
    EXPECT_EQ(QuoteForShell("~"), "'~'");
}

}  // namespace
}  // namespace vastrelline
