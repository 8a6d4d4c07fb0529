// SPDX-License-Identifier: Apache-2.0
#include "commands/SizeOption.h"

#include <CLI/CLI.hpp>

#include "frames/FrameSize.h"

namespace vastrelline {

CLI::Option* AddSizeOption(CLI::App& command, std::string& text, const std::string& help) {
    return command.add_option("--size", text, help)
        ->type_name("WxH")
        ->check(
            [](const std::string& value) {
                return ParseFrameSize(value) ? std::string()
                                             : "'" + value + "' is no size; write it as in 1300x1668";
            },
            "", "");
}

}  // namespace vastrelline
