// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// Keeps a request to end this thread waiting as long as this object lives. Such a request unwinds the
// thread's functions up to its first one, which none that may not throw survives: it would end the process.
class HeldCancellation {
public:
    HeldCancellation();
    ~HeldCancellation();  // NOLINT(performance-trivially-destructible): it has work to do on POSIX
    HeldCancellation(const HeldCancellation&) = delete;
    HeldCancellation& operator=(const HeldCancellation&) = delete;

private:
    int before_ = 0;
};

}  // namespace vastrelline
