// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reports/Base64.h"

namespace vastrelline {
namespace {

std::string Encode(const std::string& text) {
    return EncodeBase64(std::vector<uint8_t>(text.begin(), text.end()));
}

// The vectors of RFC 4648, section 10.
TEST(EncodeBase64, GivesTheLettersOfTheStandard) {
    EXPECT_EQ(Encode(""), "");
    EXPECT_EQ(Encode("f"), "Zg==");
    EXPECT_EQ(Encode("fo"), "Zm8=");
    EXPECT_EQ(Encode("foo"), "Zm9v");
    EXPECT_EQ(Encode("foob"), "Zm9vYg==");
    EXPECT_EQ(Encode("fooba"), "Zm9vYmE=");
    EXPECT_EQ(Encode("foobar"), "Zm9vYmFy");
}

TEST(EncodeBase64, KnowsAllLettersBeyondLettersAndDigits) {
    EXPECT_EQ(EncodeBase64(std::vector<uint8_t>{0xFB, 0xEF, 0xBE, 0xFF, 0xFF, 0xFF}), "++++////");
}

}  // namespace
}  // namespace vastrelline
