// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "config/ConfiguredState.h"

namespace vastrelline {
namespace {

// Taken before any test can have made a dump.
const int32_t dumpNumberAtLoad = SharedConfiguredState().DumpNumber;

TEST(ConfiguredState, DumpNumberIsZeroAtLoad) { EXPECT_EQ(dumpNumberAtLoad, 0); }

TEST(ConfiguredState, IsOneObjectForTheWholeProcess) {
    ConfiguredState& state = SharedConfiguredState();
    const ConfiguredState before = state;
    state.SectionName = L"kept";
    state.DumpNumber = before.DumpNumber + 41;
    EXPECT_EQ(SharedConfiguredState().SectionName, L"kept");
    EXPECT_EQ(SharedConfiguredState().DumpNumber, before.DumpNumber + 41);
    state = before;
}

}  // namespace
}  // namespace vastrelline
