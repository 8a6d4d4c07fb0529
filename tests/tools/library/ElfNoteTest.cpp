// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
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

TEST(ElfNote, IsNotLookedForWithoutEnd) {
    constexpr size_t kMany = 60000;
    constexpr size_t kHead = 64;
    constexpr size_t kRow = 56;
    constexpr size_t kNote = 16;
    MadeBytes file;
    file.AppendText(std::string("\x7F") + "ELF\x02\x01");
    file.Put(32, kHead, 8);
    file.Put(54, kRow, 2);
    file.Put(56, kMany, 2);
    const size_t notes = kHead + kMany * kRow;
    for (size_t row = 0; row < kMany; ++row) {  // each holds all notes
        file.Put(kHead + row * kRow, 4, 4);
        file.Put(kHead + row * kRow + 8, notes, 8);
        file.Put(kHead + row * kRow + 32, kMany * kNote, 8);
    }
    for (size_t note = 0; note < kMany; ++note) {
        file.Put(notes + note * kNote, 1, 4);
        file.Put(notes + note * kNote + kNote - 1, 0, 1);
    }
    EXPECT_FALSE(FindElfNote(file.Bytes(), "owner"));
}

}  // namespace
}  // namespace vastrelline
