// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "messages/ToolError.h"
#include "provenance/RunRecord.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

RunRecord MakeRecord() {
    RunRecord record;
    record.version = "1.2.3";
    record.libraryHash = std::string(64, '1');
    record.framePath = "../scans/tooth.raw";
    record.profilePath = "../dental.ini";
    record.frameSize = {3, 2};
    record.frameHash = std::string(64, '2');
    record.profileHash = std::string(64, '3');
    record.sensorHash = std::string(64, '4');
    record.section = "It's wide";
    record.exportName = "ImageProcessing_NS";
    record.applyMapping = true;
    record.geometry = {0, 0, 150, 150, 3, 2, 0, 0, 0, 0};
    record.hasSensor = true;
    record.sensorFolder = "S1";
    record.sensorMode = 2;
    record.window = GreyWindow{0, 4095};
    record.resultHash = std::string(64, '5');
    return record;
}

TEST(RunRecord, ComesBackWhole) {
    const RunRecord sent = MakeRecord();
    const RunRecord got = ReadRecord(RecordToJson(sent).dump(), "r.json");
    EXPECT_EQ(RecordToJson(got), RecordToJson(sent));
    EXPECT_EQ(got.version, "1.2.3");
    EXPECT_EQ(got.framePath, "../scans/tooth.raw");
    EXPECT_EQ(got.frameSize, (FrameSize{3, 2}));
    EXPECT_EQ(got.geometry, sent.geometry);
    EXPECT_TRUE(got.applyMapping);
    EXPECT_FALSE(got.applySpotCorrection);
    EXPECT_EQ(got.sensorMode, 2);
    EXPECT_EQ(got.window, (GreyWindow{0, 4095}));
    EXPECT_EQ(got.sensorHash, std::string(64, '4'));
}

TEST(RunRecord, ComesBackWithoutWhatThereWasNot) {
    RunRecord sent = MakeRecord();
    sent.sensorHash.clear();
    sent.hasSensor = false;
    sent.window.reset();
    sent.geometry.clear();
    const RunRecord got = ReadRecord(RecordToJson(sent).dump(), "r.json");
    EXPECT_EQ(got.sensorHash, "");
    EXPECT_FALSE(got.hasSensor);
    EXPECT_EQ(got.window, std::nullopt);
    EXPECT_TRUE(got.geometry.empty());
}

TEST(RunRecord, OfAPictureNamesNoFile) {
    RunRecord record = MakeRecord();
    record.section = "B\xC3\xA4r";
    const std::string line = RecordToLine(record);
    EXPECT_THAT(line, Not(HasSubstr("tooth")));
    EXPECT_THAT(line, Not(HasSubstr("dental")));
    for (const char c : line) EXPECT_TRUE(c >= ' ' && c <= '~');
    const RunRecord got = ReadRecord(line, "r.png");
    EXPECT_EQ(got.framePath, "");
    EXPECT_EQ(got.section, "B\xC3\xA4r");
}

TEST(RunRecord, TellsTheCommandThatMakesTheResult) {
    EXPECT_EQ(CommandOf(MakeRecord()),
              "vastrelline run FRAME --profile PROFILE --section 'It'\\''s wide' --export ImageProcessing_NS "
              "--mapping --geometry 0,0,150,150,3,2,0,0,0,0 --sensor-folder S1 --sensor-mode 2");
}

TEST(RunRecord, IsFoundWithinAnotherObject) {
    const nlohmann::ordered_json object = {{"tool", "vastrelline"}, {"record", RecordToJson(MakeRecord())}};
    EXPECT_EQ(ReadRecord(object.dump(), "s.json").version, "1.2.3");
}

TEST(RunRecord, ThatIsNoneIsAnError) {
    nlohmann::ordered_json cutHash = RecordToJson(MakeRecord());
    cutHash["frame"]["sha256"] = "12";
    nlohmann::ordered_json noSize = RecordToJson(MakeRecord());
    noSize["frame"]["width"] = -3;
    nlohmann::ordered_json noWindow = RecordToJson(MakeRecord());
    noWindow["window"]["high"] = 0;
    nlohmann::ordered_json fewNumbers = RecordToJson(MakeRecord());
    fewNumbers["options"]["geometry"] = {1, 2};
    nlohmann::ordered_json noHash = RecordToJson(MakeRecord());
    noHash["result"]["sha256"] = "\x1B[31m" + std::string(59, '5');
    for (const std::string& text :
         {std::string(), std::string("{}"), std::string("[1]"), std::string("12"), cutHash.dump(),
          noSize.dump(), noWindow.dump(), fewNumbers.dump(), noHash.dump(), std::string(1 << 20, '[')})
        EXPECT_THROW(ReadRecord(text, "r.json"), InputError) << text;
}

// 2^32 + 3 is no width of 3, and 2.5 no mode of 2.
TEST(RunRecord, TakesNoNumberForAnotherOne) {
    const std::vector<std::pair<const char*, nlohmann::ordered_json>> changes = {
        {"/frame/width", 4294967299},
        {"/frame/height", 18446744073709551615U},
        {"/options/geometry/4", 1e300},
        {"/options/sensor/mode", 2.5},
        {"/options/sensor/mode", -2147483649},
        {"/window/high", 4294967296 + 4095},
        {"/window/low", false}};
    for (const auto& [place, number] : changes) {
        nlohmann::ordered_json record = RecordToJson(MakeRecord());
        record[nlohmann::ordered_json::json_pointer(place)] = number;
        EXPECT_THROW(ReadRecord(record.dump(), "r.json"), InputError) << place << ' ' << number;
    }
}

}  // namespace
}  // namespace vastrelline
