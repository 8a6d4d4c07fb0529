// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/CompareJunit.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

PairOutcome Outcome(const std::string& name, PairState state) {
    PairOutcome outcome;
    outcome.name = name;
    outcome.state = state;
    outcome.firstSize = outcome.secondSize = FrameSize{2, 1};
    if (state == PairState::Unreadable) outcome.error = InputError(name, "is cut");
    return outcome;
}

TEST(FormatJunit, TellsFailuresFromErrors) {
    EXPECT_EQ(FormatJunit("a and b",
                          {Outcome("u.raw", PairState::Unreadable), Outcome("l.raw", PairState::OnlyFirst),
                           Outcome("e.raw", PairState::Equal)},
                          0),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<testsuites tests=\"3\" failures=\"1\" errors=\"1\">\n"
              "<testsuite name=\"a and b\" tests=\"3\" failures=\"1\" errors=\"1\" skipped=\"0\">\n"
              "<testcase classname=\"vastrelline.compare\" name=\"u.raw\">\n"
              "<error type=\"unreadable\" message=\"unreadable: u.raw: is cut\"/>\n"
              "</testcase>\n"
              "<testcase classname=\"vastrelline.compare\" name=\"l.raw\">\n"
              "<failure type=\"only-first\" message=\"only in A: B has no such frame\"/>\n"
              "</testcase>\n"
              "<testcase classname=\"vastrelline.compare\" name=\"e.raw\"/>\n"
              "</testsuite>\n</testsuites>\n");
}

TEST(FormatJunit, NamesStayNames) {
    const std::string text = FormatJunit("x\"><evil>", {Outcome("a\"/><!--\n\xFF.raw", PairState::Equal)}, 0);
    EXPECT_THAT(text, Not(HasSubstr("<evil>")));
    EXPECT_THAT(text, Not(HasSubstr("<!--")));
    EXPECT_THAT(text, HasSubstr("name=\"a&quot;/&gt;&lt;!--\u240A\uFFFD.raw\"/>"));
}

TEST(FormatJunit, APairIsNamedByItsFiles) {
    PairOutcome outcome = Outcome("", PairState::Equal);
    outcome.first = "a.raw";
    outcome.second = "b.raw";
    EXPECT_THAT(FormatJunit("t", {outcome}, 0), HasSubstr("name=\"a.raw and b.raw\"/>"));
}

}  // namespace
}  // namespace vastrelline
