#pragma once

namespace vastrelline {

// From here on an interrupt (Ctrl-C), a wish to end or a lost terminal is remembered and does not end the
// process at once, so that what was begun can be cleared away. A second one ends it.
void CatchCancellation();

// Whether such a wish has come.
bool IsCancelled();

}  // namespace vastrelline
