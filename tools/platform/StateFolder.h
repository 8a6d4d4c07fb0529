// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// Where the tool keeps what should outlive it and is no setting, such as histories: XDG_STATE_HOME or
// .local/state in the home folder, on Windows LOCALAPPDATA, and in it a folder of the tool's own. It is made
// for the user alone where it is missing. Empty where there is no such place or it cannot be made.
std::string StateFolder();

}  // namespace vastrelline
