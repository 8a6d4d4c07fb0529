// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/RealFrames.h"

namespace vastrelline {
namespace {

// FNV-1a of 64 bits over the pixels, low byte first.
uint64_t HashOf(const Frame& frame) {
    uint64_t hash = 14695981039346656037U;
    for (const uint16_t pixel : frame.pixels)
        for (const unsigned byte : {pixel & 0xFFU, uint32_t{pixel} >> 8U})
            hash = (hash ^ byte) * 1099511628211U;
    return hash;
}

// The hashes are those of the raw files that the PNG files were made of.
TEST(RealFrames, HaveThePixelsThatTheyWereMadeOf) {
    const Frame bitewing = ReadBitewing();
    EXPECT_EQ(bitewing.width, 1300);
    EXPECT_EQ(bitewing.height, 1668);
    EXPECT_EQ(HashOf(bitewing), 5094175834588116630U);
    const Frame periapical = ReadPeriapical();
    EXPECT_EQ(periapical.width, 1012);
    EXPECT_EQ(periapical.height, 1316);
    EXPECT_EQ(HashOf(periapical), 199912894153231575U);
}

TEST(RealFrames, APieceHasItsPixelsFromTheWhole) {
    const Frame whole = ReadBitewing();
    const Frame piece = ReadPieceOfBitewing(30, 20);
    EXPECT_EQ(piece.At(0, 0), whole.At(650, 480));
    EXPECT_EQ(piece.At(29, 19), whole.At(679, 499));
    EXPECT_THAT(ReadPieceOfBitewing(1300, 1668), EqualsFrame(whole));
    EXPECT_THROW(ReadPieceOfBitewing(1301, 1), std::invalid_argument);
    EXPECT_THROW(ReadPieceOfBitewing(1, 1669), std::invalid_argument);
}

TEST(WeakenedFrame, HasAnEighthOfEveryLevel) {
    EXPECT_THAT(Weakened(FromRows({{0, 7, 8, 4095}})), EqualsFrame(FromRows({{0, 0, 1, 511}})));
}

TEST(FrameWithBlackCorners, IsBlackWhereNoRadiationArrives) {
    const Frame frame = WithBlackCorners(Flat(400, 300, 9));
    EXPECT_EQ(frame.At(0, 299), 0);
    EXPECT_EQ(frame.At(399, 299), 0);
    // On the diagonal the circle is met where a pixel's middle lies 106 pixels from the circle's.
    EXPECT_EQ(frame.At(43, 256), 0);
    EXPECT_EQ(frame.At(44, 255), 9);
    EXPECT_EQ(frame.At(356, 256), 0);
    EXPECT_EQ(frame.At(355, 255), 9);
}

TEST(FrameWithBlackCorners, KeepsAllElse) {
    const Frame frame = WithBlackCorners(Flat(400, 300, 9));
    EXPECT_EQ(frame.At(0, 0), 9);
    EXPECT_EQ(frame.At(399, 0), 9);
    EXPECT_EQ(frame.At(0, 150), 9);
    EXPECT_EQ(frame.At(149, 299), 9);
    EXPECT_EQ(frame.At(200, 299), 9);
}

TEST(RealFrames, AreNamedForMessages) {
    for (const auto& [name, frame] : ReadRealFrames()) {
        EXPECT_FALSE(name.empty());
        EXPECT_GT(frame.pixels.size(), 1000000U) << name;
    }
}

}  // namespace
}  // namespace vastrelline
