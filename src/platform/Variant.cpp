// SPDX-License-Identifier: Apache-2.0
#include "platform/Variant.h"

#include <atomic>

namespace vastrelline {

namespace {

std::atomic<PickObserver>& Observer() {
    static std::atomic<PickObserver> observer{nullptr};
    return observer;
}

}  // namespace

void SetPickObserver(PickObserver observer) { Observer() = observer; }

void ShowPick(const void* variant) {
    const PickObserver observer = Observer().load();
    if (observer != nullptr) observer(variant);
}

}  // namespace vastrelline
