// SPDX-License-Identifier: Apache-2.0
#include "platform/ThrowReadiness.h"

#include <cstddef>
#include <cstdlib>
#include <exception>

namespace vastrelline {

namespace {

// The thread that loads the library is ready from then on, whatever happens to memory later.
[[maybe_unused]] const bool kIsLoadingThreadReady = MakeReadyToThrow();

}  // namespace

bool MakeReadyToThrow() {
    // Far more than a thread's data of the runtime. Asked of malloc, for every operator new may throw inside;
    // volatile, for the compiler may leave out a block that nobody uses.
    constexpr size_t kEnough = 4096;
    // NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): see above
    void* volatile const probe = std::malloc(kEnough);
    if (probe == nullptr) return false;
    std::free(probe);
    // NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    // The count stands in the data in question, so that asking for it makes them.
    static_cast<void>(std::uncaught_exceptions());
    return true;
}

}  // namespace vastrelline
