// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "chains/TonedCopy.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

const std::vector<uint16_t> kPlusTen = {10, 11, 12, 13, 14, 15, 16};

DriverCall CallOn(const uint16_t* input, uint16_t* output, TonedFrame* tonedInput) {
    return {input, output, 2, 2, L"", L"", tonedInput};
}

TEST(TonedCopy, WaitsWithTheInput) {
    Frame input = FromRows({{1, 2}, {3, 4}});
    Frame output(2, 2);
    TonedFrame tonedInput({input.Data(), 2, 2});
    tonedInput.Map(kPlusTen);
    std::optional<TonedFrame> copy;
    CopyTonedInput(CallOn(input.Data(), output.Data(), &tonedInput), copy);
    EXPECT_THAT(output, EqualsFrame(Flat(2, 2, 0)));
    EXPECT_THAT(input, EqualsFrame(FromRows({{1, 2}, {3, 4}})));
    copy->Read();
    EXPECT_THAT(output, EqualsFrame(FromRows({{11, 12}, {13, 14}})));
    EXPECT_THAT(input, EqualsFrame(FromRows({{11, 12}, {13, 14}})));
}

TEST(TonedCopy, InputWithoutCurvesIsCopiedAtOnce) {
    const Frame input = FromRows({{1, 2}, {3, 4}});
    Frame output(2, 2);
    std::optional<TonedFrame> copy;
    CopyTonedInput(CallOn(input.Data(), output.Data(), nullptr), copy);
    EXPECT_THAT(output, EqualsFrame(input));
    copy->Change().begin()[0] = 9;
    EXPECT_THAT(output, EqualsFrame(FromRows({{9, 2}, {3, 4}})));
    EXPECT_THAT(input, EqualsFrame(FromRows({{1, 2}, {3, 4}})));
}

// A row and a half in common, one pixel, the same frame; last, frames side by side, which wait.
TEST(TonedCopy, FramesThatOverlapTakeOneStepAfterTheOther) {
    const struct {
        size_t inputAt;
        size_t outputAt;
        std::vector<uint16_t> after;
    } cases[] = {
        {0, 1, {11, 11, 12, 13, 14, 0, 0, 0}}, {0, 3, {11, 12, 13, 11, 12, 13, 14, 0}},
        {0, 0, {11, 12, 13, 14, 0, 0, 0, 0}},  {3, 0, {11, 12, 13, 14, 12, 13, 14, 0}},
        {0, 4, {1, 2, 3, 4, 0, 0, 0, 0}},      {4, 0, {0, 0, 0, 0, 1, 2, 3, 4}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.inputAt << ' ' << c.outputAt);
        std::vector<uint16_t> buffer(8);
        for (uint16_t i = 0; i < 4; ++i) buffer[c.inputAt + i] = static_cast<uint16_t>(i + 1);
        TonedFrame tonedInput({&buffer[c.inputAt], 2, 2});
        tonedInput.Map(kPlusTen);
        std::optional<TonedFrame> copy;
        CopyTonedInput(CallOn(&buffer[c.inputAt], &buffer[c.outputAt], &tonedInput), copy);
        EXPECT_EQ(buffer, c.after);
    }
}

}  // namespace
}  // namespace vastrelline
