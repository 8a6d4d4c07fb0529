// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "messages/ToolError.h"
#include "proof/ManifestFields.h"

namespace vastrelline {
namespace {

TEST(ManifestFields, GiveValuesOfTheirType) {
    const std::string file = "m.json";
    const nlohmann::json json = ParseManifest(file, R"({"a":"x","b":[{"c":7}],"d":0.5,"e":null})", 3);
    const ManifestFields fields(file, json, "");
    EXPECT_EQ(fields.Text("a"), "x");
    EXPECT_EQ(fields.TextOr("f", "y"), "y");
    EXPECT_EQ(fields.TextOr("a", "y"), "x");
    EXPECT_DOUBLE_EQ(fields.Number("d"), 0.5);
    EXPECT_FALSE(fields.Has("e"));
    EXPECT_FALSE(fields.Has("f"));
    ASSERT_EQ(fields.Field("b").Count(), 1U);
    EXPECT_EQ(fields.Field("b").At(0).Whole("c"), 7);
    EXPECT_THROW(fields.Whole("d"), InputError);
    EXPECT_THROW(fields.Number("a"), InputError);
    EXPECT_THROW(fields.Hash("a"), InputError);
    EXPECT_THROW(fields.Field("a").Count(), InputError);
    EXPECT_THROW(fields.Field("b").Has("c"), InputError);
}

TEST(ManifestFields, NameThePlaceOfWhatIsWrong) {
    const std::string file = "m.json";
    const nlohmann::json json = ParseManifest(file, R"({"b":[{"c":7}]})", 3);
    try {
        static_cast<void>(ManifestFields(file, json, "").Field("b").At(0).Text("c"));
        FAIL() << "a number was taken for a text";
    } catch (const InputError& error) {
        EXPECT_EQ(error.Where(), "m.json");
        EXPECT_EQ(error.What(), "b[0].c is no text");
    }
}

TEST(ParseManifest, TakesNoMoreThanItsDepth) {
    EXPECT_NO_THROW(ParseManifest("m", "[[1]]", 2));
    EXPECT_THROW(ParseManifest("m", "[[[1]]]", 2), InputError);
}

}  // namespace
}  // namespace vastrelline
