// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vastrelline {

// Adds "--size WxH"; a text that is no usable size is refused while the arguments are read.
CLI::Option* AddSizeOption(CLI::App& command, std::string& text, const std::string& help);

}  // namespace vastrelline
