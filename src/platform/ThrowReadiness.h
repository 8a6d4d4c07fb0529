// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// Makes sure that this thread can throw, before anything in it does.
//
// A thread's own data of the C++ runtime are made at its first throw in a process whose program brought no
// C++ runtime along, as a host in C does that loads the library later. Where memory has run out by then, the
// C library ends the process in place of throwing.
//
// Returns   false: there is no memory for that, so whoever calls must not throw
bool MakeReadyToThrow();

}  // namespace vastrelline
