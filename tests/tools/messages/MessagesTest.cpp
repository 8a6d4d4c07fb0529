// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>

#include "messages/Messages.h"

namespace vastrelline {
namespace {

const Finding kWarning{Severity::Warning, "p.ini", 2, 1, "a: warning: b", "r"};
const Finding kError{Severity::Error, "p.ini", 0, 1, "bad", ""};

TEST(Messages, AreLinesOfTheirOwn) {
    std::ostringstream stream;
    Messages messages(stream, false);
    messages.Tell("one\ntwo\x1B[2J\n");
    messages.Show(kWarning);
    messages.Fail("end\x7F");
    messages.Explain("Examples:\n  a\n");
    EXPECT_EQ(stream.str(), "one?two?[2J\np.ini:2: warning: a: warning: b [r]\nend?\nExamples:\n  a\n");
}

TEST(Messages, AreErrorsOnlyWhenQuiet) {
    std::ostringstream stream;
    Messages messages(stream, false);
    messages.BeQuiet();
    messages.Tell("one");
    messages.Show(kWarning);
    messages.Show(kError);
    messages.Fail("end");
    EXPECT_EQ(stream.str(), "p.ini: error: bad\nend\n");
}

TEST(Messages, ColourTheSeverityOnly) {
    std::ostringstream stream;
    Messages messages(stream, true);
    messages.Show(kWarning);
    messages.Show(kError);
    EXPECT_EQ(stream.str(),
              "p.ini:2: \033[33mwarning:\033[0m a: warning: b [r]\np.ini: \033[31merror:\033[0m bad\n");
}

}  // namespace
}  // namespace vastrelline
