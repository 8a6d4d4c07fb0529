// SPDX-License-Identifier: Apache-2.0
#include <pthread.h>

#include "platform/HeldCancellation.h"

namespace vastrelline {

HeldCancellation::HeldCancellation() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }

HeldCancellation::~HeldCancellation() { pthread_setcancelstate(before_, nullptr); }

}  // namespace vastrelline
