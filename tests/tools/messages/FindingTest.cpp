// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "messages/Finding.h"

namespace vastrelline {
namespace {

TEST(Finding, TellsWhereWhatAndByWhichRule) {
    EXPECT_EQ(FormatFinding({Severity::Warning, "P.ini", 41, 1,
                             "04_MAX_SLOP is read by no stage; did you mean 04_MAX_SLOPE?", "unknown-key"}),
              "P.ini:41: warning: 04_MAX_SLOP is read by no stage; did you mean 04_MAX_SLOPE? [unknown-key]");
}

TEST(Finding, TellsTheColumnThatIsNotTheFirst) {
    EXPECT_EQ(FormatFinding({Severity::Error, "P.ini", 3, 7, "text", ""}), "P.ini:3:7: error: text");
}

TEST(Finding, OfAWholeFileHasNoLine) {
    EXPECT_EQ(FormatFinding({Severity::Note, "P.ini", 0, 9, "text", "r"}), "P.ini: note: text [r]");
    EXPECT_EQ(FormatFinding({Severity::Note, "", 0, 1, "text", ""}), "note: text");
}

}  // namespace
}  // namespace vastrelline
