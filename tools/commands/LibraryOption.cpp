// SPDX-License-Identifier: Apache-2.0
#include "commands/LibraryOption.h"

#include <CLI/CLI.hpp>

namespace vastrelline {

CLI::Option* AddLibraryOption(CLI::App& command, const std::string& help, const std::string& type,
                              std::string& file) {
    return command.add_option("--library", file, help)
        ->type_name(type)
        ->check(
            // A script's variable that was never set: the library of the tool itself is not what was meant.
            [](const std::string& value) {
                return value.empty() ? std::string("the name of the library is empty") : std::string();
            },
            "", "");
}

}  // namespace vastrelline
