// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "commands/DiffFrames.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(DiffFrames, AreThoseThatARunDumps) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=8\n");
    const ExportTraits& traits = TraitsOf(ExportKind::NE);
    const SectionPlan plan = MakeSectionPlan(file, "A", traits.kind);
    const RunFrames frames = RunForFrames(file, plan, traits, {1, 1, {5}}, [](ExportRequest& request) {
        EXPECT_FALSE(request.bitmapPath.empty());
        const ProfileFile copy = ProfileFile::Read(request.profile);
        const std::wstring path = copy.ValueOf(*copy.FindEntry("A", "WRITE_PATH")).value_or(L"");
        WriteBytes(std::string(path.begin(), path.end()) + "00_pregaussian.raw", std::string("\x09\x00", 2));
        return 0;
    });
    ASSERT_EQ(frames.frames.size(), 1U);
    EXPECT_EQ(frames.frames[0].frame.pixels, std::vector<uint16_t>{9});
    EXPECT_EQ(frames.stages.size(), 1U);
    EXPECT_THROW(RunForFrames(file, plan, traits, {1, 1, {5}}, [](ExportRequest&) { return 6; }),
                 ProcessingError);
}

TEST(DiffFrames, AreToldAsATableAndAsAnArray) {
    const std::vector<FrameEffect> effects{{"input", 0.0, 0.0, 0}, {"00 Gaussian", 0.25, 1.5, 12}};
    EXPECT_EQ(FormatEffects("f.raw", effects),
              "f.raw, after each stage: pixels that differ, mean and largest difference in levels\n"
              "  input           0.0 %      0.0      0\n"
              "  00 Gaussian    25.0 %      1.5     12\n");
    EXPECT_EQ(EffectsToJson(effects).dump(),
              R"([{"title":"input","changedShare":0.0,"meanDifference":0.0,"largest":0},)"
              R"({"title":"00 Gaussian","changedShare":0.25,"meanDifference":1.5,"largest":12}])");
}

}  // namespace
}  // namespace vastrelline
