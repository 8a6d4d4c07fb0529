// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <vector>

#include "report/CurveFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(CurveFile, HoldsOneLinePerLevelWithBothEnds) {
    const TemporaryFolder folder;
    const std::vector<int32_t> curve{0, 0, 7, 65535, -3};
    std::vector<int32_t> asked;
    WriteCurveFile(folder.Wide(L"02_GammaCurve.txt"), 1, 4, [&](int32_t level) {
        asked.push_back(level);
        return curve.at(static_cast<size_t>(level));
    });
    EXPECT_EQ(ReadBytes(folder.Path() / "02_GammaCurve.txt"), "1\t0\r\n2\t7\r\n3\t65535\r\n4\t-3\r\n");
    EXPECT_EQ(asked, (std::vector<int32_t>{1, 2, 3, 4}));
}

TEST(CurveFile, ListsATableAsFarAsItGoes) {
    const TemporaryFolder folder;
    const std::vector<uint16_t> table{9, 8, 65535};
    const auto fileOf = [&](int32_t first, int32_t last) {
        WriteCurveFile(folder.Wide(L"curve.txt"), first, last, table);
        return ReadBytes(folder.Path() / "curve.txt");
    };
    EXPECT_EQ(fileOf(1, 2), "1\t8\r\n2\t65535\r\n");
    EXPECT_EQ(fileOf(1, 3), "1\t8\r\n2\t65535\r\n");
    EXPECT_EQ(fileOf(0, 0), "0\t9\r\n");
    EXPECT_EQ(fileOf(0, -1), "");
    EXPECT_EQ(fileOf(3, 5), "");
}

TEST(CurveFile, KeepsTheCaseOfItsName) {
    const TemporaryFolder folder;
    WriteCurveFile(folder.Wide(L"InverseCurve.txt"), 0, 0, [](int32_t) { return 5; });
    EXPECT_EQ(std::filesystem::directory_iterator(folder.Path())->path().filename(), "InverseCurve.txt");
}

TEST(CurveFile, ReplacesALongerEarlierFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "curve.txt", "an earlier curve of many more bytes\r\n");
    WriteCurveFile(folder.Wide(L"curve.txt"), 3, 3, [](int32_t) { return 9; });
    EXPECT_EQ(ReadBytes(folder.Path() / "curve.txt"), "3\t9\r\n");
}

TEST(CurveFile, WithoutLevelsIsEmpty) {
    const TemporaryFolder folder;
    WriteCurveFile(folder.Wide(L"curve.txt"), 65536, 0, [](int32_t) { return 9; });
    EXPECT_EQ(ReadBytes(folder.Path() / "curve.txt"), "");
}

TEST(CurveFile, LastLevelMayBeTheLargestInteger) {
    constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
    const TemporaryFolder folder;
    WriteCurveFile(folder.Wide(L"curve.txt"), kLargest - 1, kLargest, [](int32_t) { return 1; });
    EXPECT_EQ(ReadBytes(folder.Path() / "curve.txt"), "2147483646\t1\r\n2147483647\t1\r\n");
}

TEST(CurveFile, ThatCannotBeMadeIsSkipped) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "taken.txt");
    EXPECT_NO_THROW(
        WriteCurveFile(folder.Wide(L"missing") + L"\\curve.txt", 0, 1, [](int32_t) { return 1; }));
    EXPECT_NO_THROW(WriteCurveFile(folder.Wide(L"taken.txt"), 0, 1, [](int32_t) { return 1; }));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "taken.txt"));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

}  // namespace
}  // namespace vastrelline
