// SPDX-License-Identifier: Apache-2.0
#include "report/RunDumps.h"

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "report/RawDump.h"

namespace vastrelline {

RunDumps RunDumps::Configured() {
    ConfiguredState& state = SharedConfiguredState();
    return {state.SaveImage != 0, state.WritePath, state.DumpNumber};
}

RunDumps RunDumps::Fixed(int32_t& dumpCounter) {
    const FixedState& state = SharedFixedState();
    return {state.SaveImage != 0, state.WritePath, dumpCounter};
}

RunDumps::RunDumps(bool areOn, const std::wstring& writePath, int32_t& number)
    : areOn_(areOn), writePath_(writePath), number_(number) {}

void RunDumps::Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                    int32_t height) const {
    if (areOn_) DumpNumbered(writePath_, nameFormat, number_, pixels, width, height);
}

void RunDumps::Dump(std::wstring_view nameFormat, TonedFrame& frame) const {
    if (areOn_) Dump(nameFormat, frame.Read().begin(), frame.Width(), frame.Height());
}

void RunDumps::DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                          int32_t height) const {
    int32_t number = number_;
    if (areOn_) DumpNumbered(writePath_, nameFormat, number, pixels, width, height);
}

}  // namespace vastrelline
