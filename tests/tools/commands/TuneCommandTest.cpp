// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "ToolRun.h"
#include "commands/TuneCommand.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class TuneCommandTest : public testing::Test {
protected:
    TuneCommandTest() {
        WriteBytes(folder_.Path() / "a_2x2.raw", std::string(8, '\0'));
        WriteBytes(folder_.Path() / "p.ini", "[A]\nPROCMODE=2\n");
    }

    // All of these end before anything is served.
    ToolRun Tune(const std::vector<std::string>& more) const {
        std::vector<std::string> words{"tune", "--profile", folder_.Narrow("p.ini"), "--no-browser",
                                       "--no-history"};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, MustNotBeCalled);
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

TEST_F(TuneCommandTest, RefusesAFileToCompareWithThatIsNotThere) {
    const ToolRun run = Tune({folder_.Narrow("a_2x2.raw"), "--against", folder_.Narrow("old.ini")});
    EXPECT_EQ(run.exitCode, static_cast<int>(ExitCode::Input));
    EXPECT_THAT(run.errors, HasSubstr("old.ini: does not exist"));
}

TEST_F(TuneCommandTest, TakesOneFileAnOptionAndTheNextWordForAFrame) {
    const ToolRun run = Tune({"--against", folder_.Narrow("p.ini"), folder_.Narrow("none.raw")});
    EXPECT_EQ(run.exitCode, static_cast<int>(ExitCode::Input));
    EXPECT_THAT(run.errors, HasSubstr("none.raw"));
}

}  // namespace
}  // namespace vastrelline
