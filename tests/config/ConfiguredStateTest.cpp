#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

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

TEST(ConfiguredState, SwitchesAndNumberAreSignedAnd32BitsWide) {
    EXPECT_TRUE((std::is_same_v<decltype(ConfiguredState::SaveLog), int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ConfiguredState::SaveImage), int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ConfiguredState::DumpNumber), int32_t>));
}

}  // namespace
}  // namespace vastrelline
