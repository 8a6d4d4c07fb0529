// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "batch/FrameList.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

class FrameList : public testing::Test {
protected:
    void Make(const std::string& leaf) const {
        fs::create_directories((folder_.Path() / leaf).parent_path());
        WriteBytes(folder_.Path() / leaf, "x");
    }

    std::vector<std::string> Results(const std::vector<std::string>& leaves) const {
        std::vector<std::string> inputs;
        for (const std::string& leaf : leaves) inputs.push_back(folder_.Narrow(leaf));
        std::vector<std::string> results;
        for (const ListedFrame& frame : ListFrames(inputs, folder_.Narrow("in/out"), "png"))
            results.push_back(frame.result);
        return results;
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

TEST_F(FrameList, KeepsFoldersBelowTheOneThatWasNamed) {
    for (const char* const leaf : {"in/b/x.raw", "in/a/x.raw", "in/y.TIF", "in/notes.txt", "in/.v1-0.png",
                                   "in/.hidden/z.raw", "in/out/x.png"})
        Make(leaf);
    EXPECT_THAT(Results({"in"}), testing::ElementsAre("a/x.png", "b/x.png", "y.png"));
    EXPECT_THAT(Results({"in/"}), testing::ElementsAre("a/x.png", "b/x.png", "y.png"));
    const std::vector<ListedFrame> frames =
        ListFrames({folder_.Narrow("in")}, folder_.Narrow("in/out"), "bmp");
    EXPECT_EQ(frames.at(0).path, folder_.Narrow("in/a/x.raw"));
    EXPECT_EQ(frames.at(0).result, "a/x.bmp");
}

TEST_F(FrameList, KeepsFramesOfOneNameApartWhereverTheyAreFrom) {
    Make("in/a/x.raw");
    Make("in/b/x.raw");
    const testing::Matcher<std::vector<std::string>> both = testing::ElementsAre("a/x.png", "b/x.png");
    EXPECT_THAT(Results({"in/a", "in/b"}), both);
    EXPECT_THAT(Results({"in/b/x.raw", "in/a/x.raw"}), both);
    EXPECT_THAT(Results({"in/*/x.raw"}), both);
    EXPECT_THAT(Results({"in/?", "in/a", "in/a/x.raw"}), both) << "each once";
    EXPECT_THAT(Results({"in/a/x.raw"}), testing::ElementsAre("x.png"));
}

TEST_F(FrameList, KeepsTheEndingsOfFramesThatDifferInNothingElse) {
    Make("in/x.raw");
    Make("in/x.pgm");
    Make("in/scan.2024");
    EXPECT_THAT(Results({"in"}), testing::ElementsAre("x.pgm.png", "x.raw.png"));
    EXPECT_THAT(Results({"in/scan.2024"}), testing::ElementsAre("scan.2024.png"));
    Make("in/x.raw.tif");
    EXPECT_THROW(Results({"in"}), UsageError);
}

TEST_F(FrameList, RefusesResultsThatWouldReplaceFrames) {
    Make("in/x.png");
    EXPECT_THROW(ListFrames({folder_.Narrow("in")}, folder_.Narrow("in"), "tif"), UsageError);
    EXPECT_THROW(ListFrames({folder_.Narrow("in/*.png")}, folder_.Narrow("in"), "png"), UsageError);
    EXPECT_EQ(ListFrames({folder_.Narrow("in/*.png")}, folder_.Narrow("in"), "tif").size(), 1U);
}

TEST_F(FrameList, RefusesWhatHoldsNoFrame) {
    fs::create_directory(folder_.Path() / "in");
    for (const char* const leaf : {"in", "missing", "in/*.raw"})
        EXPECT_THROW(Results({leaf}), InputError) << leaf;
    EXPECT_THROW(Results({}), InputError);
}

}  // namespace
}  // namespace vastrelline
