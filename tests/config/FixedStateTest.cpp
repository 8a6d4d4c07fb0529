// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"

namespace vastrelline {
namespace {

TEST(FixedState, BeginsWithItsOwnSectionAndNothingElse) {
    const FixedState state;
    EXPECT_EQ(state.SectionName, L"KD340");
    EXPECT_EQ(state.IniPath, L"");
    EXPECT_EQ(state.LogPath, L"");
    EXPECT_EQ(state.WritePath, L"");
    EXPECT_EQ(state.SaveImage, 0);
}

TEST(FixedState, IsOneObjectApartFromTheConfiguredChains) {
    FixedState& state = SharedFixedState();
    const FixedState before = state;
    const ConfiguredState configuredBefore = SharedConfiguredState();
    state.SectionName = L"kept";
    state.SaveImage = configuredBefore.SaveImage + 1;
    EXPECT_EQ(SharedFixedState().SectionName, L"kept");
    EXPECT_EQ(SharedFixedState().SaveImage, configuredBefore.SaveImage + 1);
    EXPECT_EQ(SharedConfiguredState().SectionName, configuredBefore.SectionName);
    EXPECT_EQ(SharedConfiguredState().SaveImage, configuredBefore.SaveImage);
    state = before;
}

}  // namespace
}  // namespace vastrelline
