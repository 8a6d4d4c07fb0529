// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "messages/ErrorJson.h"

namespace vastrelline {
namespace {

TEST(ErrorJson, HoldsEveryPart) {
    EXPECT_EQ(ErrorJson(InputError("a.raw", "is empty", "name another")).dump(),
              R"({"where":"a.raw","what":"is empty","remedy":"name another"})");
    EXPECT_EQ(ErrorJson(std::nullopt).dump(), "null");
}

}  // namespace
}  // namespace vastrelline
