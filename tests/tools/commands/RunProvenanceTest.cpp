// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "commands/RunProvenance.h"
#include "files/Sha256.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

TEST(RunProvenance, HasTheHashesOfAllThatCounts) {
    const std::string text = "[A]\nPROCMODE=2\n";
    const ProfileFile profile("p.ini", text);
    RunOptions options;
    options.frame = "f.raw";
    options.applyMapping = true;
    const ExportTraits& traits = TraitsOf(ExportKind::Plain);
    const SectionPlan plan = MakeSectionPlan(profile, "A", traits.kind);
    const RunRecord record =
        MakeRunRecord({options, profile, plan, traits}, {2, 1, {1, 2}}, {2, 1, {3, 4}}, GreyWindow{0, 255});
    EXPECT_EQ(record.frameHash, Sha256Of("\1\0\2\0"s));
    EXPECT_EQ(record.resultHash, Sha256Of("\3\0\4\0"s));
    EXPECT_EQ(record.profileHash, Sha256Of(text));
    EXPECT_EQ(record.libraryHash.size(), 64U);
    EXPECT_TRUE(record.applyMapping);
    EXPECT_EQ(record.exportName, "ImageProcessing");
    const std::vector<PngText> texts = RecordTexts(record);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].keyword, "Software");
    EXPECT_EQ(ReadRecord(texts[1].text, "x").resultHash, record.resultHash);
}

TEST(RunProvenance, FindsFilesFromTheRecordsFolder) {
    RunRecord record;
    record.framePath = "scans/f.raw";
    record.profilePath = "/etc/p.ini";
    const RunRecord beside = RecordInFile(record, "scans/r.json");
    EXPECT_EQ(beside.framePath, "f.raw");
    const std::string up = RecordInFile(record, "out/r.json").framePath;
    EXPECT_EQ(up, "../scans/f.raw");
    record.framePath = "-";
    EXPECT_EQ(RecordInFile(record, "r.json").framePath, "") << "standard input is not found again";
}

TEST(RunProvenance, AsksForNoSensorWhereNoneIsRead) {
    SectionPlan plan;
    plan.chain = ChainKind::Fixed;
    EXPECT_EQ(SensorHashOf(plan, ""), "");
    plan.chain = ChainKind::Configured;
    EXPECT_EQ(SensorHashOf(plan, "no such sensor"), "");
}

}  // namespace
}  // namespace vastrelline
