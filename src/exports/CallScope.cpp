// SPDX-License-Identifier: Apache-2.0
#include "exports/CallScope.h"

#include <cstdint>
#include <utility>

namespace vastrelline {

namespace {

std::recursive_mutex callMutex;
int32_t callDepth = 0;  // of the thread whose turn it is

std::optional<CallScope::OuterState> SaveOuterState() {
    if (callDepth == 0) return std::nullopt;
    return CallScope::OuterState{SharedConfiguredState(), SharedFixedState()};
}

}  // namespace

CallScope::CallScope(const std::wstring& iniPath)
    : turn_(callMutex), outer_(SaveOuterState()), profile_(iniPath) {
    ++callDepth;
}

CallScope::~CallScope() {
    --callDepth;
    if (!outer_) return;
    outer_->configured.DumpNumber = SharedConfiguredState().DumpNumber;
    std::swap(SharedConfiguredState(), outer_->configured);
    std::swap(SharedFixedState(), outer_->fixed);
}

}  // namespace vastrelline
