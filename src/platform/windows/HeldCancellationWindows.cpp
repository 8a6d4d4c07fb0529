// SPDX-License-Identifier: Apache-2.0
#include "platform/HeldCancellation.h"

namespace vastrelline {

// No thread is asked to end here: it is ended at once, or not.
HeldCancellation::HeldCancellation() { before_ = 0; }

HeldCancellation::~HeldCancellation() = default;

}  // namespace vastrelline
