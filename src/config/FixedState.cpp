#include "config/FixedState.h"

namespace vastrelline {

FixedState& SharedFixedState() {
    static FixedState state;
    return state;
}

}  // namespace vastrelline
