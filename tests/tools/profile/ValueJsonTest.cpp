// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "profile/ValueJson.h"

namespace vastrelline {
namespace {

TEST(ValueToJson, HasNumbersAsNumbers) {
    EXPECT_EQ(ValueToJson(-3).dump(), "-3");
    EXPECT_EQ(ValueToJson(1.5).dump(), "1.5");
    EXPECT_EQ(ValueToJson(0.1F).dump(), "0.1");
    EXPECT_EQ(ValueToJson(std::wstring(L"a\u00E9")).dump(), "\"a\xC3\xA9\"");
    EXPECT_EQ(ValueToJson(std::numeric_limits<double>::infinity()).dump(), "\"inf\"");
    EXPECT_EQ(ValueToJson(-std::numeric_limits<float>::infinity()).dump(), "\"-inf\"");
}

TEST(ValuesToJson, HoldsPlacesWithTheirValues) {
    const ProfileFile file("p.ini",
                           "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n00_MAX_SLOPE=1,5\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    const nlohmann::ordered_json object =
        ValuesToJson("p.ini", plan, TraitsOf(ExportKind::Plain), ReadEffectiveValues(file, plan));
    EXPECT_EQ(object.at("profile"), "p.ini");
    EXPECT_EQ(object.at("section"), "A");
    EXPECT_EQ(object.at("export"), "ImageProcessing");
    EXPECT_EQ(object.at("chain"), "configured chain");
    const nlohmann::ordered_json& stage = object.at("places").at(2);
    EXPECT_EQ(stage.at("role"), "listed-stage");
    EXPECT_EQ(stage.at("position"), 0);
    EXPECT_EQ(stage.at("stage"), 3);
    EXPECT_EQ(stage.at("stageName"), "CLAHE");
    const nlohmann::ordered_json& slope = stage.at("values").at(3);
    EXPECT_EQ(slope.at("key"), "00_MAX_SLOPE");
    EXPECT_EQ(slope.at("value"), 1.0);
    EXPECT_EQ(slope.at("mark"), "misread");
    EXPECT_EQ(slope.at("line"), 5);
    EXPECT_EQ(slope.at("reason"), "the decimal sign is a point: read as 1");
    EXPECT_EQ(slope.at("default"), 1.5);
    EXPECT_FALSE(stage.at("values").at(1).contains("line"));
}

}  // namespace
}  // namespace vastrelline
