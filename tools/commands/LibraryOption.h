// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vastrelline {

// Adds "--library FILE"; an empty name is refused while the arguments are read. `file` stays as it is without
// the option.
//
// type   how help shows the name
CLI::Option* AddLibraryOption(CLI::App& command, const std::string& help, const std::string& type,
                              std::string& file);

}  // namespace vastrelline
