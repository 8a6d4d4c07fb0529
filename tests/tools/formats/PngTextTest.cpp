// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "formats/PngFormat.h"

namespace vastrelline {
namespace {

using Bytes = std::vector<uint8_t>;

const std::vector<PngText> kTexts{{"Software", "a tool"}, {"Key", "{\"a\": 1}"}};

TEST(PngText, ComesBack) {
    for (const Bytes& png : {EncodePng8({1, 2}, 2, 1, kTexts), EncodePng16({2, 1, {1, 2}}, kTexts)}) {
        EXPECT_EQ(FindPngText(png, "Software"), "a tool");
        EXPECT_EQ(FindPngText(png, "Key"), "{\"a\": 1}");
        EXPECT_EQ(FindPngText(png, "Ke"), std::nullopt);
        EXPECT_EQ(FindPngText(png, "Keys"), std::nullopt);
    }
}

TEST(PngText, ChangesNoPixel) {
    EXPECT_EQ(DecodePng(EncodePng8({7, 9}, 2, 1, kTexts)).pixels, (std::vector<uint16_t>{7, 9}));
    EXPECT_EQ(EncodePng8({7, 9}, 2, 1, {}), EncodePng8({7, 9}, 2, 1));
}

TEST(PngText, IsNotInWhatIsNoPng) {
    EXPECT_EQ(FindPngText({}, "Key"), std::nullopt);
    const std::string text = "tEXtKey";
    EXPECT_EQ(FindPngText({text.begin(), text.end()}, "Key"), std::nullopt);
}

TEST(PngText, IsNotReadBehindTheEndOfACutFile) {
    const Bytes png = EncodePng8({1, 2}, 2, 1, kTexts);
    for (size_t length = 0; length <= png.size(); ++length) {
        const Bytes cut(png.begin(), png.begin() + static_cast<std::ptrdiff_t>(length));
        const auto text = FindPngText(cut, "Key");
        if (text) {
            EXPECT_EQ(*text, "{\"a\": 1}") << length;
        }
    }
    Bytes lying = png;
    lying[8] = 0xFF;  // the first block says that it has 4 GiB
    EXPECT_EQ(FindPngText(lying, "Key"), std::nullopt);
}

}  // namespace
}  // namespace vastrelline
