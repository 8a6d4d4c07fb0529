// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>

#include "platform/KeepFromChildren.h"

namespace vastrelline {

void KeepFromChildren(intptr_t socket) { fcntl(static_cast<int>(socket), F_SETFD, FD_CLOEXEC); }

}  // namespace vastrelline
