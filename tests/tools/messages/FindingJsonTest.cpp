// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "messages/FindingJson.h"

namespace vastrelline {
namespace {

TEST(FindingJson, HoldsEveryPart) {
    const std::vector<Finding> findings{{Severity::Error, "p.ini", 3, 4, "text", "rule"},
                                        {Severity::Note, "", 0, 1, "more", ""}};
    EXPECT_EQ(FindingsJson(findings).dump(),
              R"([{"severity":"error","file":"p.ini","line":3,"column":4,"text":"text","rule":"rule"},)"
              R"({"severity":"note","file":"","line":0,"column":1,"text":"more","rule":""}])");
    EXPECT_EQ(FindingsJson({}).dump(), "[]");
}

}  // namespace
}  // namespace vastrelline
