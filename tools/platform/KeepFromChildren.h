// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Lets no program that this one starts have a socket. A browser that had the server's would keep its port,
// and hold on to the pages that ask there, long after the server has ended.
//
// socket   a descriptor; on Windows, where only what is named is handed on, nothing is done
void KeepFromChildren(intptr_t socket);

}  // namespace vastrelline
