// SPDX-License-Identifier: Apache-2.0
#include "config/FixedState.h"

namespace vastrelline {

FixedState& SharedFixedState() {
    static FixedState state;
    return state;
}

}  // namespace vastrelline
