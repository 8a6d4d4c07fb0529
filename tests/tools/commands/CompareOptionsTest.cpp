// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "commands/CompareOptions.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

CompareOptions Options(const std::string& difference, double gain = 0.0) {
    CompareOptions options;
    options.first = "a.raw";
    options.second = "b.raw";
    options.difference = difference;
    options.gain = gain;
    return options;
}

TEST(TestCompareOptions, TakesWhatMakesSense) {
    EXPECT_NO_THROW(TestCompareOptions(Options(""), true));
    EXPECT_NO_THROW(TestCompareOptions(Options("d.png", 4), false));
    EXPECT_NO_THROW(TestCompareOptions(Options("d.raw"), false));
    CompareOptions options = Options("");
    options.report = "r.HTML";
    options.junit = "j.xml";
    EXPECT_NO_THROW(TestCompareOptions(options, true));
}

TEST(TestCompareOptions, RefusesPicturesThatSayNothing) {
    EXPECT_THROW(TestCompareOptions(Options("", 4), false), UsageError);
    EXPECT_THROW(TestCompareOptions(Options("d.png"), true), UsageError);
    EXPECT_THROW(TestCompareOptions(Options("d.gif"), false), UsageError);
    EXPECT_THROW(TestCompareOptions(Options("d.raw", 4), false), UsageError);
    EXPECT_THROW(TestCompareOptions(Options("d.pgm", 4), false), UsageError);
}

// So that a slip of the hand does not replace a frame.
TEST(TestCompareOptions, RefusesOtherEndingsOfReports) {
    CompareOptions report = Options("");
    report.report = "b.raw";
    EXPECT_THROW(TestCompareOptions(report, false), UsageError);
    CompareOptions junit = Options("");
    junit.junit = "compared";
    EXPECT_THROW(TestCompareOptions(junit, false), UsageError);
}

TEST(AddCompareOptions, BoundsNumbers) {
    for (const char* words : {"a b --tolerance -1", "a b --tolerance 65536", "a b --gain 0", "a"}) {
        CLI::App app;
        CompareOptions options;
        AddCompareOptions(app, options);
        EXPECT_THROW(app.parse(words), CLI::ParseError) << words;
    }
    CLI::App app;
    CompareOptions options;
    AddCompareOptions(app, options);
    app.parse("a b --tolerance 3 --difference d.png --gain 2.5 --junit j.xml --report r.html --force");
    EXPECT_EQ(options.tolerance, 3);
    EXPECT_EQ(options.gain, 2.5);
    EXPECT_TRUE(options.mayReplace);
}

}  // namespace
}  // namespace vastrelline
