#include "config/ConfiguredState.h"

namespace vastrelline {

ConfiguredState& SharedConfiguredState() {
    static ConfiguredState state;
    return state;
}

}  // namespace vastrelline
