// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// Values of the fixed chain that its driver sets on every call and its stages read, apart from those of the
// configured chain. They are process-wide, outlive the call and have no lock of their own: processing calls
// take turns. Whether a run logs stands in its settings record.
struct FixedState {
    std::wstring IniPath;
    std::wstring SectionName = L"KD340";  // until the first run
    std::wstring LogPath;
    std::wstring WritePath;
    int32_t SaveImage = 0;
};

FixedState& SharedFixedState();

}  // namespace vastrelline
