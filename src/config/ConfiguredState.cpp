// SPDX-License-Identifier: Apache-2.0
#include "config/ConfiguredState.h"

namespace vastrelline {

ConfiguredState& SharedConfiguredState() {
    static ConfiguredState state;
    return state;
}

}  // namespace vastrelline
