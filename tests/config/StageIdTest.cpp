// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "config/StageId.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StageListTest : public testing::Test {
protected:
    void WriteProfile(const std::string& text) const { WriteBytes(folder_.Path() / "p.ini", text); }
    std::wstring ProfilePath() const { return folder_.Wide(L"p.ini"); }
    std::vector<int32_t> Positions(int32_t functionCount) const {
        return ListStagePositions(ProfilePath(), L"S", functionCount);
    }

private:
    TemporaryFolder folder_;
};

TEST_F(StageListTest, ReadsTheNumberAtEachPosition) {
    WriteProfile(
        "[S]\r\n00_Function_Number=10\r\n01_Function_Number=3\r\n07_Function_Number=-1\r\n"
        "100_Function_Number=12\r\n");
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 0), 10);
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 1), 3);
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 7), -1);
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 100), 12);
}

TEST_F(StageListTest, PositionWithoutANumberGivesZero) {
    WriteProfile("[S]\r\n00_Function_Number=10\r\n02_Function_Number=none\r\n");
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 1), 0);
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 2), 0);
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"Other", 0), 0);
    EXPECT_EQ(ReadStageNumber(ProfilePath() + L"x", L"S", 0), 0);
}

TEST_F(StageListTest, PositionsComeInAscendingOrderWhateverTheOrderInTheFile) {
    WriteProfile(
        "[S]\r\n02_Function_Number=8\r\n11_Function_Number=3\r\n00_Function_Number=10\r\n"
        "100_Function_Number=4\r\n");
    EXPECT_THAT(Positions(101), ElementsAre(0, 2, 11, 100));
}

TEST_F(StageListTest, PositionsFromTheCountOnAreLeftOut) {
    WriteProfile("[S]\r\n00_Function_Number=8\r\n01_Function_Number=8\r\n02_Function_Number=8\r\n");
    EXPECT_THAT(Positions(2), ElementsAre(0, 1));
    EXPECT_THAT(Positions(1), ElementsAre(0));
    EXPECT_THAT(Positions(0), IsEmpty());
    EXPECT_THAT(Positions(-1), IsEmpty());
    EXPECT_THAT(Positions(INT32_MIN), IsEmpty());
}

TEST_F(StageListTest, LargestCountIsNoMoreWorkThanTheKeysThatExist) {
    WriteProfile("[S]\r\n00_Function_Number=8\r\n2147483646_Function_Number=9\r\n");
    EXPECT_THAT(Positions(INT32_MAX), ElementsAre(0, 2147483646));
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 2147483646), 9);
}

TEST_F(StageListTest, KeysMatchWithoutRegardToCase) {
    WriteProfile("[s]\r\n00_FUNCTION_NUMBER=8\r\n01_function_number=9\r\n");
    EXPECT_THAT(Positions(5), ElementsAre(0, 1));
}

TEST_F(StageListTest, OnlyTheExactKeyNamesAPosition) {
    WriteProfile(
        "[S]\r\n1_Function_Number=8\r\n002_Function_Number=8\r\n-3_Function_Number=8\r\n"
        "04_Function_Numbers=8\r\nFunction_Number=8\r\n05Function_Number=8\r\n;06_Function_Number=8\r\n"
        "99999999999999999999_Function_Number=8\r\n[T]\r\n07_Function_Number=8\r\n");
    EXPECT_THAT(Positions(INT32_MAX), IsEmpty());
}

TEST_F(StageListTest, AListOfAnyLengthHoldsTheSamePositions) {
    std::string text = "[S]\r\n";
    for (const char* position : {"00", "7", "07", "99", "100", "0100", "999", "1000"})
        text += std::string(position) + "_Function_Number\r\n" + position + "_BLOCK_SIZE=8\r\n";
    WriteProfile(text);
    EXPECT_THAT(Positions(1000), ElementsAre(0, 7, 99, 100, 999));
    EXPECT_THAT(Positions(1001), ElementsAre(0, 7, 99, 100, 999, 1000));
}

TEST_F(StageListTest, KeyThatStandsTwiceIsOnePosition) {
    WriteProfile("[S]\r\n00_Function_Number=8\r\n00_Function_Number=9\r\n");
    EXPECT_THAT(Positions(1), ElementsAre(0));
    EXPECT_EQ(ReadStageNumber(ProfilePath(), L"S", 0), 8);
}

TEST_F(StageListTest, MissingFileAndMissingSectionHoldNoPosition) {
    EXPECT_THAT(Positions(10), IsEmpty());
    WriteProfile("[T]\r\n00_Function_Number=8\r\n");
    EXPECT_THAT(Positions(10), IsEmpty());
}

TEST(StageId, NumbersAreThoseOfTheList) {
    const StageId order[] = {StageId::PreContrastProc,
                             StageId::HistogramStretch,
                             StageId::CLAHE,
                             StageId::Unsharp,
                             StageId::AdaptiveSmoothing,
                             StageId::Pyramid,
                             StageId::Median,
                             StageId::Gaussian,
                             StageId::SigmoidLUT,
                             StageId::GammaLUT,
                             StageId::LinearLUT,
                             StageId::PreProcessing,
                             StageId::HDR};
    int32_t number = 1;
    for (const StageId id : order) EXPECT_EQ(static_cast<int32_t>(id), number++);
    EXPECT_EQ(number, 14);
}

}  // namespace
}  // namespace vastrelline
