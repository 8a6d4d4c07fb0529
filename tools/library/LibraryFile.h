// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// The file of the library that this process has loaded; that of the program where the library is a part of
// it.
//
// Errors   ProcessingError if the system does not tell it
std::string LibraryFile();

}  // namespace vastrelline
