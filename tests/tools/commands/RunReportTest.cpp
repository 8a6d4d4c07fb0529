// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "commands/JsonObject.h"
#include "commands/RunReport.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class RunReportTest : public testing::Test {
protected:
    RunReportTest()
        : file_("p.ini", "[A]\nPROCMODE=3\nFunctionCount=2\n00_Function_Number=8\n01_Function_Number=12\n"),
          plan_(MakeSectionPlan(file_, "A", ExportKind::S)) {
        frame_.frame = {2, 1, {7, 9}};
        run_.call.output = {1, 4095};
        run_.call.record.elapsedMs = 12.34;
        run_.call.record.dose = DoseFigures{1289, 2000, 30, 0.015, false};
        RunLog log;
        log.stages = {{"Gaussian", 2.0, {}}};
        run_.stages = ListRanStages(plan_, false, log);
        report_.framePath = "f.raw";
        report_.frame = &frame_;
        report_.input = RangeOf(frame_.frame.pixels);
        report_.profilePath = "p.ini";
        report_.plan = &plan_;
        report_.traits = &TraitsOf(ExportKind::S);
        report_.run = &run_;
        report_.picturePath = "o.png";
        report_.pictureKind = "16-bit levels";
    }

    std::string Printed() const {
        std::ostringstream out;
        PrintRunReport(out, report_);
        return out.str();
    }

    nlohmann::json Json() const {
        std::ostringstream out;
        PrintObject(out, "run", ExitCode::Well, RunToJson(report_));
        return nlohmann::json::parse(out.str());
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    ProfileFile file_;
    SectionPlan plan_;
    LoadedFrame frame_;
    FrameRun run_;
    RunReport report_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(RunReportTest, TellsWhatRan) {
    EXPECT_EQ(Printed(),
              "read     f.raw, 2x1 pixels\n"
              "input    levels 7 to 9\n"
              "profile  p.ini, section 'A'\n"
              "export   ImageProcessingS: low-exposure chain, the section's list\n"
              "exposure normal: 1.50 % of the object's 2000 pixels lie below level 100; its median is 1289\n"
              "stages    0  Gaussian                2 ms\n"
              "          1  preProcessing              -\n"
              "result   ImageProcessingS returned 0 (success) after 12.3 ms\n"
              "output   levels 1 to 4095\n"
              "picture  o.png (16-bit levels)\n");
}

TEST_F(RunReportTest, TellsOtherFilesAndALowFrameWithoutObject) {
    run_.call.record.dose = DoseFigures{0, 0, 0, NAN, true};
    run_.stages.clear();
    report_.isInPlace = true;
    report_.stripPath = "s.png";
    report_.logPath = "l.txt";
    const std::string text = Printed();
    for (const char* line : {"profile  p.ini, section 'A', in place\n",
                             "export   ImageProcessingS: low-exposure chain, low sequence\n",
                             "exposure low: no pixel belongs to the object\n", "stages   none\n",
                             "strip    s.png\n", "log      l.txt\n"})
        EXPECT_NE(text.find(line), std::string::npos) << text;
    EXPECT_TRUE(Json().at("exposure").at("lowRatio").is_null());
}

TEST_F(RunReportTest, IsOneObject) {
    report_.findings = {{Severity::Warning, "p.ini", 2, 1, "text", "rule"}};
    report_.framePath = "\xFF.raw";  // no UTF-8
    const nlohmann::json object = Json();
    EXPECT_EQ(object.at("exit"), 0);
    EXPECT_EQ(object.at("frame").at("levels").at("greatest"), 9);
    EXPECT_EQ(object.at("chain"), "low-exposure chain");
    EXPECT_EQ(object.at("stages").size(), 2U);
    EXPECT_EQ(object.at("stages").at(0).at("elapsedMs"), 2.0);
    EXPECT_TRUE(object.at("stages").at(1).at("elapsedMs").is_null());
    EXPECT_EQ(object.at("stages").at(1).at("number"), 12);
    EXPECT_EQ(object.at("exposure").at("objectMedian"), 1289);
    EXPECT_EQ(object.at("findings").at(0).at("rule"), "rule");
    EXPECT_TRUE(object.at("log").is_null());
}

// Every field of an object and of those in it.
void ListFields(const nlohmann::json& value, std::set<std::string>& fields) {
    if (value.is_object()) {
        for (const auto& [name, inner] : value.items()) {
            fields.insert(name);
            ListFields(inner, fields);
        }
    }
    if (value.is_array())
        for (const nlohmann::json& inner : value) ListFields(inner, fields);
}

TEST_F(RunReportTest, HasNoFieldThatThePageDoesNotTell) {
    report_.findings = {{Severity::Warning, "p.ini", 2, 1, "text", "rule"}};
    const std::string page = ReadBytes(SourceTreeFolder() / "docs/tool-json.md");
    std::set<std::string> fields;
    ListFields(Json(), fields);
    EXPECT_GT(fields.size(), 30U);
    for (const std::string& field : fields)
        EXPECT_NE(page.find("`" + field + "`"), std::string::npos) << field;
}

TEST(RangeOf, IsZeroOfNothing) {
    EXPECT_EQ(RangeOf({}).greatest, 0);
    EXPECT_EQ(RangeOf({5, 3, 9}).least, 3);
    EXPECT_EQ(RangeOf({5, 3, 9}).greatest, 9);
}

}  // namespace
}  // namespace vastrelline
