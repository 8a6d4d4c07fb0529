// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "config/CallProfile.h"
#include "config/ConfiguredState.h"
#include "config/FixedState.h"

namespace vastrelline {

// What a processing call holds from its first to its last step: its turn, since calls share process-wide
// values and a second one waits here until the first is done, and its one reading of the profile.
//
// Nested calls   a host may call again on the same thread while a message box of the first call is open. The
//                inner call does not wait, and the outer one finds the process-wide values as it left them,
//                but for the number of the next dump, which goes on
class CallScope {
public:
    // Waits for a call of another thread.
    explicit CallScope(const std::wstring& iniPath);
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;
    CallScope(CallScope&&) = delete;
    CallScope& operator=(CallScope&&) = delete;

    ReadResult ProfileState() const { return profile_.State(); }

    // The process-wide values of the call around this one.
    struct OuterState {
        ConfiguredState configured;
        FixedState fixed;
    };

private:
    std::unique_lock<std::recursive_mutex> turn_;
    std::optional<OuterState> outer_;
    CallProfile profile_;
};

}  // namespace vastrelline
