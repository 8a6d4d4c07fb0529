// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// From here on an interrupt (Ctrl-C), a wish to end or a lost terminal is remembered and does not end the
// process at once, so that what was begun can be cleared away. A second one ends it. Those that were ignored
// stay so. A reader who goes away, as `head` does, ends nothing either: the stream tells it as an error.
void CatchCancellation();

// Whether such a wish has come.
bool IsCancelled();

// Whether somebody went away who read what the tool prints. Windows does not tell that from other failures to
// write: never there.
bool IsReaderGone();

}  // namespace vastrelline
