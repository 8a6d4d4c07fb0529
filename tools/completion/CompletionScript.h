// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

namespace vastrelline {

inline constexpr std::array<std::string_view, 4> kShells{"bash", "zsh", "fish", "powershell"};

// A script that makes a shell ask the tool how a line may go on. It knows nothing of the tool's commands
// itself.
//
// shell   one of kShells
std::string_view CompletionScript(std::string_view shell);

}  // namespace vastrelline
