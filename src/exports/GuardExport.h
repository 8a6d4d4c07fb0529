// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/FloatingPointScope.h"
#include "platform/HeldCancellation.h"
#include "platform/ThrowReadiness.h"

namespace vastrelline {

// Runs the body of an export and gives its result, or `failure` if it throws: the caller of an export may
// not be C++, and no exception may reach it. Where there is no memory to throw, the body does not even begin.
// A thread that is asked to end does so behind it. How the host has its processor round is not how the body
// computes.
template <typename Result, typename Body>
Result GuardExport(Result failure, Body&& body) noexcept {
    const HeldCancellation held;
    const FloatingPointScope plain;
    if (!MakeReadyToThrow()) return failure;
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

}  // namespace vastrelline
