// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "commands/StripRun.h"
#include "formats/PngFormat.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(StripRun, DrawsTheFramesThatTheRunDumps) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    const Frame frame{2, 2, {0, 0, 0, 0}};
    FrameRun first;
    first.call.frame = frame;
    first.call.output = {2048, 2048, 2048, 2048};
    first.stages = ListRanStages(plan, false, std::nullopt);
    // 1024, 2048 and 4095 of 4095 are 64, 128 and 255 of 255.
    const auto dump = [](ExportRequest& request) {
        const ProfileFile copy = ProfileFile::Read(request.profile);
        EXPECT_EQ(ReadIntegerKey(copy, "A", "SAVE_IMAGE", 0), 1);
        const ProfileEntry* const entry = copy.FindEntry("A", "WRITE_PATH");
        const std::wstring path = copy.ValueOf(*entry).value_or(L"");
        const std::string folder(path.begin(), path.end());
        EXPECT_TRUE(folder.ends_with('/'));
        WriteBytes(folder + "00_originalimage.raw", std::string("\0\x04\0\x04\0\x04\0\x04", 8));
        WriteBytes(folder + "01_clahe.raw", std::string("\xFF\x0F\xFF\x0F\xFF\x0F\xFF\x0F", 8));
        return 0;
    };
    const Frame strip = DecodePng(MakeStrip(file, plan, first, frame, 4095, dump));
    EXPECT_EQ(std::count(strip.pixels.begin(), strip.pixels.end(), 64), 4) << "the input";
    EXPECT_EQ(std::count(strip.pixels.begin(), strip.pixels.end(), 255), 4) << "after the stage";
    EXPECT_EQ(std::count(strip.pixels.begin(), strip.pixels.end(), 128), 4) << "the result";
}

TEST(StripRun, FailsWithTheSecondRun) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=2\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    const Frame frame{1, 1, {0}};
    FrameRun first;
    first.call.frame = frame;
    first.call.output = {0};
    EXPECT_THROW(MakeStrip(file, plan, first, frame, 4095, [](ExportRequest&) { return 6; }),
                 ProcessingError);
}

TEST(StripRun, WithoutDumpsIsAnError) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=2\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    const Frame frame{1, 1, {0}};
    FrameRun first;
    first.call.frame = frame;
    first.call.output = {0};
    EXPECT_THROW(MakeStrip(file, plan, first, frame, 4095, [](ExportRequest&) { return 0; }), OutputError);
}

}  // namespace
}  // namespace vastrelline
