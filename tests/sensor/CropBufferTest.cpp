// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "sensor/CropBuffer.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ToVector.h"

namespace vastrelline {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
constexpr auto kNoType = static_cast<ElementType>(5);
constexpr auto kNegativeType = static_cast<ElementType>(-1);

struct CropCase {
    const char* name;
    int32_t left;
    int32_t top;
    Frame crop;
};

class CropBufferTest : public testing::TestWithParam<CropCase> {};

TEST_P(CropBufferTest, CutsARectangleAndIsZeroOutside) {
    const Frame source = FromRows({{1, 2, 3}, {4, 5, 6}});
    const Frame& expected = GetParam().crop;
    const ScratchVector<std::byte> bytes =
        CropBuffer(source.Data(), 3, 2, GetParam().left, GetParam().top, expected.width, expected.height,
                   ElementType::Unsigned16);
    Frame crop(expected.width, expected.height);
    ASSERT_EQ(bytes.size(), crop.pixels.size() * sizeof(uint16_t));
    if (!bytes.empty()) std::memcpy(crop.Data(), bytes.data(), bytes.size());
    EXPECT_THAT(crop, EqualsFrame(expected));
}

INSTANTIATE_TEST_SUITE_P(
    Rectangles, CropBufferTest,
    testing::Values(
        CropCase{"All", 0, 0, FromRows({{1, 2, 3}, {4, 5, 6}})},
        CropCase{"OneElement", 2, 1, FromRows({{6}})}, CropCase{"OneColumn", 1, 0, FromRows({{2}, {5}})},
        CropCase{"PastTheRight", 2, 0, FromRows({{3, 0}, {6, 0}})},
        CropCase{"PastTheBottom", 0, 1, FromRows({{4, 5, 6}, {0, 0, 0}})},
        CropCase{"BeforeTheLeft", -1, 0, FromRows({{0, 1}, {0, 4}})},
        CropCase{"AboveTheTop", 0, -1, FromRows({{0, 0}, {1, 2}})},
        CropCase{"AllAround", -1, -1,
                 FromRows({{0, 0, 0, 0, 0}, {0, 1, 2, 3, 0}, {0, 4, 5, 6, 0}, {0, 0, 0, 0, 0}})},
        CropCase{"RightOfTheSource", 3, 0, Flat(2, 2, 0)}, CropCase{"LeftOfTheSource", -2, 0, Flat(2, 2, 0)},
        CropCase{"BelowTheSource", 0, 2, Flat(2, 2, 0)}, CropCase{"AboveTheSource", 0, -2, Flat(2, 2, 0)},
        CropCase{"FarBeforeTheSource", kLowest, kLowest, Flat(2, 2, 0)},
        CropCase{"FarBehindTheSource", kHighest, kHighest, Flat(2, 2, 0)},
        CropCase{"NoColumns", 1, 0, Frame(0, 2)}, CropCase{"NoRows", 1, 0, Frame(2, 0)}),
    [](const auto& test) { return std::string(test.param.name); });

// The element (2, 1) of a 3 by 2 buffer, cut out as a 1 by 1 buffer.
template <typename Element>
Element LastOfSix(ElementType type, const std::vector<Element>& six) {
    const ScratchVector<std::byte> bytes = CropBuffer(six.data(), 3, 2, 2, 1, 1, 1, type);
    Element element{};
    EXPECT_EQ(bytes.size(), sizeof element);
    std::memcpy(&element, bytes.data(), sizeof element);
    return element;
}

TEST(CropBuffer, TakesElementsOfEveryType) {
    EXPECT_EQ(LastOfSix<int16_t>(ElementType::Signed16, {1, 2, 3, 4, 5, -6}), -6);
    EXPECT_EQ(LastOfSix<int32_t>(ElementType::Signed32, {1, 2, 3, 4, 5, -600000}), -600000);
    EXPECT_EQ(LastOfSix<double>(ElementType::Float64, {1, 2, 3, 4, 5, -6.5}), -6.5);
    EXPECT_EQ(LastOfSix<uint8_t>(ElementType::Unsigned8, {1, 2, 3, 4, 5, 250}), 250);
}

TEST(CropBuffer, UnknownTypesReadAsZeros) {
    EXPECT_EQ(LastOfSix<uint16_t>(kNoType, {1, 2, 3, 4, 5, 6}), 0);
    EXPECT_EQ(LastOfSix<uint16_t>(kNegativeType, {1, 2, 3, 4, 5, 6}), 0);
}

TEST(CropBuffer, EmptySourcesGiveZeros) {
    EXPECT_EQ(ToVector(CropBuffer(nullptr, 0, 0, 0, 0, 2, 1, ElementType::Unsigned8)),
              std::vector<std::byte>(2));
}

TEST(CropBuffer, RefusesSizesThatNoBufferHas) {
    const uint16_t pixel = 0;
    const auto crop = [&](int32_t width, int32_t height) {
        return CropBuffer(&pixel, 1, 1, 0, 0, width, height, ElementType::Unsigned16);
    };
    EXPECT_THROW(crop(-1, 1), std::length_error);
    EXPECT_THROW(crop(1, -1), std::length_error);
    EXPECT_THROW(crop(kHighest, 1), std::length_error);
    EXPECT_THROW(crop(65536, 65536), std::length_error);
}

}  // namespace
}  // namespace vastrelline
