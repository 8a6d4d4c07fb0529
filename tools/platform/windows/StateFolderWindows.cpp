// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <system_error>

#include "platform/OwnProcess.h"
#include "platform/PathText.h"
#include "platform/StateFolder.h"

namespace vastrelline {

// What lies in that folder inherits its rights, which are the user's alone.
std::string StateFolder() {
    const std::filesystem::path parent = PathOf(EnvironmentText("LOCALAPPDATA").value_or(""));
    if (!parent.is_absolute()) return {};
    const std::filesystem::path own = parent / "Vastrelline";
    std::error_code error;
    std::filesystem::create_directories(own, error);
    return std::filesystem::is_directory(own, error) ? own.string() : std::string();
}

}  // namespace vastrelline
