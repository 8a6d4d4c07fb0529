// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "library/ElfNote.h"
#include "library/MadeLibraries.h"

namespace vastrelline {
namespace {

TEST(ElfNote, IsFoundInFilesOfEitherWidthAndOrder) {
    for (const bool isWide : {false, true})
        for (const bool isHighFirst : {false, true}) {
            const std::vector<uint8_t> file = MadeElf(isWide, isHighFirst, "owner", "said so");
            EXPECT_TRUE(IsElf(file));
            EXPECT_EQ(FindElfNote(file, "owner"), "said so") << isWide << isHighFirst;
        }
}

TEST(ElfNote, OfAnotherOwnerIsNone) {
    const std::vector<uint8_t> file = MadeElf(true, false, "owner", "said so");
    EXPECT_FALSE(FindElfNote(file, "owne"));
    EXPECT_FALSE(FindElfNote(file, "owners"));
    EXPECT_FALSE(FindElfNote(std::vector<uint8_t>{'M', 'Z', 0, 0}, "owner"));
    EXPECT_FALSE(FindElfNote({}, "owner"));
}

TEST(ElfNote, OfACutFileIsNone) {
    for (const bool isWide : {false, true}) {
        const std::vector<uint8_t> file = MadeElf(isWide, false, "owner", "said so");
        for (size_t size = 0; size < file.size(); ++size)
            EXPECT_FALSE(FindElfNote(
                std::vector<uint8_t>(file.begin(), file.begin() + static_cast<long>(size)), "owner"))
                << size;
    }
}

TEST(ElfNote, OfABentFileIsTheOneOrNone) {
    std::mt19937 random(7);
    int found = 0;
    for (int i = 0; i < 20000; ++i) {
        std::vector<uint8_t> file = MadeElf(i % 2 == 0, i % 4 < 2, "owner", "said so");
        for (int bend = 0; bend < 3; ++bend)
            file[random() % file.size()] = random() % 3 == 0 ? 0xFF : static_cast<uint8_t>(random());
        if (FindElfNote(file, "owner")) ++found;
    }
    EXPECT_GT(found, 0);
    EXPECT_LT(found, 20000);
}

}  // namespace
}  // namespace vastrelline
