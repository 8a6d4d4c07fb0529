#pragma once

#include "platform/HeldCancellation.h"
#include "platform/ThrowReadiness.h"

namespace vastrelline {

// Runs the body of an export and gives its result, or `failure` if it throws: the caller of an export may
// not be C++, and no exception may reach it. Where there is no memory to throw, the body does not even begin.
// A thread that is asked to end does so behind it.
template <typename Result, typename Body>
Result GuardExport(Result failure, Body&& body) noexcept {
    const HeldCancellation held;
    if (!MakeReadyToThrow()) return failure;
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

}  // namespace vastrelline
