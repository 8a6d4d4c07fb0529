// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// Values of the configured chain that its driver sets on every call and its stages read. They are
// process-wide, outlive the call and have no lock of their own: processing calls take turns.
struct ConfiguredState {
    std::wstring IniPath;
    std::wstring SectionName;
    std::wstring LogPath;
    std::wstring WritePath;
    int32_t SaveLog = 0;
    int32_t SaveImage = 0;
    int32_t DumpNumber = 0;  // of the next dump; rises from frame to frame and is never set back
};

ConfiguredState& SharedConfiguredState();

}  // namespace vastrelline
