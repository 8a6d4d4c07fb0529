// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>
#include <initializer_list>

namespace vastrelline {

// Keeps signals that this thread brings upon itself from the host: as long as this object lives they are
// blocked in the thread, and what has come by then is swallowed. Signals that were waiting before it was made
// are the host's and stay.
class SilencedSignals {
public:
    explicit SilencedSignals(std::initializer_list<int> signals);
    ~SilencedSignals();
    SilencedSignals(const SilencedSignals&) = delete;
    SilencedSignals& operator=(const SilencedSignals&) = delete;

private:
    sigset_t own_{};  // to be swallowed
    sigset_t before_{};
    bool isBlocking_ = false;
};

}  // namespace vastrelline
