// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "ToolRun.h"
#include "commands/FolderRun.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

TEST(FolderRun, ReadsTheWindow) {
    RunOptions options;
    EXPECT_EQ(TestFolderRunOptions(options), std::nullopt);
    options.window = "10:20";
    EXPECT_EQ(TestFolderRunOptions(options), (GreyWindow{10, 20}));
    options.window = "20:10";
    EXPECT_THROW(TestFolderRunOptions(options), UsageError);
}

TEST(FolderRun, ReadsFrameAndProfileAndShowsWhatIsOdd) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "in_2x2.raw", "\0\0\1\0\2\0\3\x20"s);
    WriteBytes(folder.Path() / "p.ini", "[A]\nPROCMODE=3\nBITSTORED=12\n");
    RunOptions options;
    options.frame = folder.Narrow("in_2x2.raw");
    options.profile = folder.Narrow("p.ini");
    options.section = "A";
    std::ostringstream report;
    std::ostringstream errors;
    Messages messages(errors, false);
    const ExportCaller mustNot = MustNotBeCalled;
    CommandContext context{report, messages, mustNot, false, "stages"};
    const FolderRun run = PrepareFolderRun(options, context);
    EXPECT_EQ(run.frame.frame.width, 2);
    EXPECT_EQ(run.traits.name, "ImageProcessingS") << "it knows PROCMODE 3";
    ASSERT_FALSE(run.findings.empty());
    EXPECT_NE(errors.str().find("BITSTORED"), std::string::npos) << errors.str();
    options.section = "B";
    EXPECT_THROW(PrepareFolderRun(options, context), ToolError);
}

}  // namespace
}  // namespace vastrelline
