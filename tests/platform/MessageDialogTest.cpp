// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cfenv>
#include <string>
#include <utility>
#include <vector>

#include "platform/MessageDialog.h"

namespace vastrelline {
namespace {

std::vector<std::pair<std::wstring, MessageIcon>> shown;

void Remember(const std::wstring& text, MessageIcon icon) { shown.emplace_back(text, icon); }

void Ignore(const std::wstring& /*text*/, MessageIcon /*icon*/) {}

TEST(SetMessageHandler, TakesThePlaceOfThePlatformUntilItIsRestored) {
    shown.clear();
    EXPECT_EQ(SetMessageHandler(Remember), nullptr);
    ShowMessage(L"one", MessageIcon::Error);
    ShowMessage(L"two", MessageIcon::None);
    EXPECT_EQ(SetMessageHandler(Ignore), &Remember);
    ShowMessage(L"three", MessageIcon::None);
    EXPECT_EQ(SetMessageHandler(nullptr), &Ignore);
    const std::vector<std::pair<std::wstring, MessageIcon>> expected = {{L"one", MessageIcon::Error},
                                                                        {L"two", MessageIcon::None}};
    EXPECT_TRUE(shown == expected);
}

void RoundUpwards(const std::wstring& /*text*/, MessageIcon /*icon*/) { std::fesetround(FE_UPWARD); }

// While a box stands, windows of the host work on.
TEST(ShowMessage, KeepsTheFloatingPointState) {
    SetMessageHandler(RoundUpwards);
    ShowMessage(L"one", MessageIcon::Error);
    SetMessageHandler(nullptr);
    volatile double one = 1;
    const double third = one / 3;
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(third, 0x1.5555555555555p-2);  // upwards it ends in 6
}

}  // namespace
}  // namespace vastrelline
