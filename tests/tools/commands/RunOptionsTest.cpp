// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "commands/RunOptions.h"
#include "messages/ToolError.h"

// What the command line makes of wrong options is tested where command lines are.
namespace vastrelline {
namespace {

RunOptions Good() {
    RunOptions options;
    options.picture = "a.png";
    return options;
}

TEST(RunOptions, OfAnUsualRunAreTaken) {
    EXPECT_NO_THROW(TestRunOptions(Good()));
    EXPECT_NO_THROW(TestRunExport(Good(), TraitsOf(ExportKind::Plain)));
}

TEST(RunOptions, RefuseATimeThatIsNone) {
    for (const double seconds : {0.0, -1.0, std::nan(""), 1e300, 1e9}) {
        RunOptions options = Good();
        options.hasTimeout = true;
        options.timeoutSeconds = seconds;
        EXPECT_THROW(TestRunOptions(options), UsageError) << seconds;
    }
}

TEST(RunOptions, NameTheExportThatMayBeMeant) {
    RunOptions options = Good();
    options.exportName = "ImageProcesing_NS";
    try {
        TestRunOptions(options);
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_EQ(error.Remedy(), "did you mean 'ImageProcessing_NS'?");
    }
}

TEST(RunOptions, RefuseAStripThatIsNoPng) {
    RunOptions options = Good();
    options.strip = "strip.bmp";
    EXPECT_THROW(TestRunOptions(options), UsageError);
}

}  // namespace
}  // namespace vastrelline
