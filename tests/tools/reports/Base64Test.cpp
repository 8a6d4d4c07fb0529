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

std::string Decode(const std::string& text) {
    const std::optional<std::vector<uint8_t>> bytes = DecodeBase64(text);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "none";
}

TEST(DecodeBase64, GivesTheBytesBack) {
    EXPECT_EQ(Decode(""), "");
    EXPECT_EQ(Decode("Zg=="), "f");
    EXPECT_EQ(Decode("Zm8="), "fo");
    EXPECT_EQ(Decode("Zm9vYmFy"), "foobar");
    EXPECT_EQ(DecodeBase64("++++////"), (std::vector<uint8_t>{0xFB, 0xEF, 0xBE, 0xFF, 0xFF, 0xFF}));
}

TEST(DecodeBase64, RefusesWhatNobodyEncodes) {
    for (const char* const text :
         {"Z", "Zg", "Zg=", "Z===", "====", "Zg==Zg==", "Zm9v\n", "Zm-v", "Zh==", "Zm9="})
        EXPECT_EQ(Decode(text), "none") << text;
}

}  // namespace
}  // namespace vastrelline
