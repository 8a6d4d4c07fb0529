// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "commands/PhantomOptions.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

struct OtherKind {
    const char* name;
    const char* kind;
    std::function<void(PhantomOptions&)> set;
    const char* words;
};

class OptionOfAnotherKind : public testing::TestWithParam<OtherKind> {};

TEST_P(OptionOfAnotherKind, IsRefusedWithTheKindsThatHaveIt) {
    PhantomOptions options;
    options.frame = "a.raw";
    options.kind = GetParam().kind;
    GetParam().set(options);
    try {
        TestPhantomOptions(options);
        FAIL() << "nothing was thrown";
    } catch (const ToolError& error) {
        EXPECT_EQ(error.Code(), ExitCode::WrongUse);
        EXPECT_STREQ(error.what(), GetParam().words);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Options, OptionOfAnotherKind,
    testing::Values(
        OtherKind{"Dose", "wedge", [](auto& o) { o.dose = 1.0; }, "--dose is not for wedge; it is for teeth"},
        OtherKind{"Bits", "teeth", [](auto& o) { o.bits = 8; },
                  "--bits is not for teeth; it is for wedge, edge and lines"},
        OtherKind{"Low", "teeth", [](auto& o) { o.low = 8.0; },
                  "--low is not for teeth; it is for wedge, edge and lines"},
        OtherKind{"High", "teeth", [](auto& o) { o.high = 8.0; },
                  "--high is not for teeth; it is for wedge, edge and lines"},
        OtherKind{"Noise", "teeth", [](auto& o) { o.noise = {8.0}; },
                  "--noise is not for teeth; it is for wedge, edge and lines"},
        OtherKind{"Steps", "edge", [](auto& o) { o.steps = 8; }, "--steps is not for edge; it is for wedge"},
        OtherKind{"Angle", "lines", [](auto& o) { o.angle = 8.0; },
                  "--angle is not for lines; it is for edge"},
        OtherKind{"Blur", "wedge", [](auto& o) { o.blur = 1.0; },
                  "--blur is not for wedge; it is for edge and lines"},
        OtherKind{"Frequencies", "edge", [](auto& o) { o.frequencies = {0.1}; },
                  "--frequencies is not for edge; it is for lines"},
        OtherKind{"Pitch", "wedge", [](auto& o) { o.pitch = 0.02; },
                  "--pitch is not for wedge; it is for edge and lines"}),
    [](const auto& test) { return test.param.name; });

TEST(PhantomOptions, OwnOptionsAreTaken) {
    PhantomOptions options;
    options.frame = "a.raw";
    options.kind = "lines";
    options.blur = 1.0;
    options.frequencies = {0.1};
    options.pitch = 0.02;
    EXPECT_NO_THROW(TestPhantomOptions(options));
}

}  // namespace
}  // namespace vastrelline
