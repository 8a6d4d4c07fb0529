// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <utility>
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

struct HalfPair {
    std::u16string units;
    std::string shown;
};

TEST(VersionResource, ShowsHalfAPairAsUnknown) {
    const std::string unknown = "\xEF\xBF\xBD";
    const char16_t high = 0xD83E;
    const char16_t low = 0xDDB7;
    const std::string tooth = "\xF0\x9F\xA6\xB7";
    for (const auto& [units, shown] : std::vector<HalfPair>{{{u'a', low, u'b'}, "a" + unknown + "b"},
                                                            {{u'a', high, u'b'}, "a" + unknown + "b"},
                                                            {{u'a', high}, "a" + unknown},
                                                            {{high, high, low}, unknown + tooth},
                                                            {{high, low, low}, tooth + unknown},
                                                            {{low, high}, unknown + unknown}})
        EXPECT_EQ(FindVersionStrings(MadeDll(true, {{u"Name", units}})), (Strings{{"Name", shown}}));
}

// What the lengths can tell is read to its end: here 1500 * 36 bytes.
TEST(VersionResource, GivesAllStringsThatItCanHold) {
    std::vector<std::pair<std::u16string, std::u16string>> strings;
    Strings expected;
    for (int i = 1000; i < 2500; ++i) {
        const std::string number = std::to_string(i);
        strings.emplace_back(u"Name" + std::u16string(number.begin(), number.end()), u"text");
        expected.emplace("Name" + number, "text");
    }
    EXPECT_EQ(FindVersionStrings(MadeDll(true, strings)), expected);
}

// The lengths of the outer blocks wrap round at 64 KiB. No string is made up of what is not whole.
TEST(VersionResource, BeyondItsLengthsGivesNoWrongString) {
    std::vector<std::pair<std::u16string, std::u16string>> strings;
    for (int i = 1000; i < 4000; ++i) {
        const std::string number = std::to_string(i);
        strings.emplace_back(u"Name" + std::u16string(number.begin(), number.end()), u"text");
    }
    const auto found = FindVersionStrings(MadeDll(true, strings));
    ASSERT_TRUE(found);
    EXPECT_LT(found->size(), 3000U);
    for (const auto& [name, text] : *found) {
        EXPECT_EQ(name.substr(0, 4), "Name");
        EXPECT_EQ(text, "text");
    }
}

TEST(VersionResource, IsOneBlockWhateverLiesBehind) {
    const auto block = [](const char16_t* name, const char16_t* text) {
        return VersionBlock(u"VS_VERSION_INFO", u"",
                            {VersionBlock(u"StringFileInfo", u"",
                                          {VersionBlock(u"040904B0", u"", {VersionBlock(name, text, {})})})});
    };
    MadeBytes blocks = block(u"A", u"first");
    blocks.FillUp(4);
    const MadeBytes second = block(u"B", u"second");
    for (const uint8_t byte : second.Bytes()) blocks.Append(byte, 1);
    EXPECT_EQ(FindVersionStrings(DllOf(true, blocks)), (Strings{{"A", "first"}}));
}

TEST(VersionResource, HasItsStringsInTheTablesForStringsOnly) {
    const std::vector<MadeBytes> tables{
        VersionBlock(u"040904B0", u"", {VersionBlock(u"A", u"English", {}), VersionBlock(u"B", u"only", {})}),
        VersionBlock(u"040704B0", u"", {VersionBlock(u"A", u"deutsch", {}), VersionBlock(u"C", u"nur", {})})};
    const MadeBytes version = VersionBlock(
        u"VS_VERSION_INFO", u"",
        {VersionBlock(u"VarFileInfo", u"", {VersionBlock(u"T", u"", {VersionBlock(u"D", u"none", {})})}),
         VersionBlock(u"StringFileInfo", u"", tables)});
    EXPECT_EQ(FindVersionStrings(DllOf(false, version)),
              (Strings{{"A", "English"}, {"B", "only"}, {"C", "nur"}}));
    EXPECT_EQ(FindVersionStrings(DllOf(
                  false, VersionBlock(u"ANOTHER", u"", {VersionBlock(u"StringFileInfo", u"", tables)}))),
              Strings{});
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
