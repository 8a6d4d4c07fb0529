// SPDX-License-Identifier: Apache-2.0
#include "platform/KeepFromChildren.h"

namespace vastrelline {

void KeepFromChildren(intptr_t /*socket*/) {}

}  // namespace vastrelline
