#pragma once

namespace vastrelline {

// Runs the body of an export and gives its result, or `failure` if it throws: the caller of an export may
// not be C++, and no exception may reach it.
template <typename Result, typename Body>
Result GuardExport(Result failure, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

}  // namespace vastrelline
