// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "library/MadeLibraries.h"
#include "library/VersionResource.h"

namespace vastrelline {
namespace {

using Strings = std::map<std::string, std::string>;

TEST(VersionResource, GivesItsStringsInUtf8) {
    for (const bool isWide : {false, true}) {
        const std::vector<uint8_t> file = MadeDll(
            isWide, {{u"FileVersion", u"1.2"}, {u"Empty", u""}, {u"Name", u"B\u00E4r \u20AC \U0001F9B7"}});
        EXPECT_TRUE(IsPortableExecutable(file));
        EXPECT_EQ(FindVersionStrings(file), (Strings{{"FileVersion", "1.2"},
                                                     {"Empty", ""},
                                                     {"Name", "B\xC3\xA4r \xE2\x82\xAC \xF0\x9F\xA6\xB7"}}));
    }
}

TEST(VersionResource, ShowsHalfAPairAsUnknown) {
    const std::u16string half = {u'a', char16_t{0xDC00}, u'b'};
    EXPECT_EQ(FindVersionStrings(MadeDll(true, {{u"Name", half}})), (Strings{{"Name",
                                                                              "a\xEF\xBF\xBD"
                                                                              "b"}}));
}

TEST(VersionResource, OfAnotherFileIsNone) {
    EXPECT_FALSE(FindVersionStrings({}));
    EXPECT_FALSE(FindVersionStrings(MadeElf(true, false, "owner", "text")));
    std::vector<uint8_t> noMark = MadeDll(true, {{u"A", u"b"}});
    noMark[64] = 'Q';
    EXPECT_FALSE(IsPortableExecutable(noMark));
    EXPECT_FALSE(FindVersionStrings(noMark));
}

TEST(VersionResource, OfACutFileIsNone) {
    const std::vector<uint8_t> file = MadeDll(false, {{u"FileVersion", u"1.2"}});
    for (size_t size = 0; size < file.size(); ++size)
        EXPECT_FALSE(
            FindVersionStrings(std::vector<uint8_t>(file.begin(), file.begin() + static_cast<long>(size))))
            << size;
}

TEST(VersionResource, OfABentFileEndsSomehow) {
    std::mt19937 random(11);
    int found = 0;
    for (int i = 0; i < 20000; ++i) {
        std::vector<uint8_t> file = MadeDll(i % 2 == 0, {{u"FileVersion", u"1.2"}, {u"Commit", u"abc"}});
        for (int bend = 0; bend < 4; ++bend)
            file[random() % file.size()] = random() % 3 == 0 ? 0xFF : static_cast<uint8_t>(random());
        const auto strings = FindVersionStrings(file);
        if (strings && strings->contains("Commit")) ++found;
    }
    EXPECT_GT(found, 0);
    EXPECT_LT(found, 20000);
}

}  // namespace
}  // namespace vastrelline
