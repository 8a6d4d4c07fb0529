// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>

namespace vastrelline {

// Calls `work` with each part from 0 to count - 1, once and begun in this order, on as many threads as
// wanted.
//
// threads   1 or more; fewer do if the system gives no more
// work      called from several threads at a time; false: no further part is begun. What it throws is thrown
//           again when all threads have ended, the first of it
void ShareOut(size_t threads, size_t count, const std::function<bool(size_t part)>& work);

}  // namespace vastrelline
