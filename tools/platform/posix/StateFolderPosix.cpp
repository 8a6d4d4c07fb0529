// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/OwnProcess.h"
#include "platform/StateFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// Where states go; a relative path in the variable counts as none.
fs::path FindParent() {
    fs::path named = EnvironmentText("XDG_STATE_HOME").value_or("");
    if (named.is_absolute()) return named;
    const fs::path home = HomeFolder().value_or("");
    return home.is_absolute() ? home / ".local" / "state" : fs::path();
}

// Every folder that is missing is made for the user alone. Those that are there keep their rights.
bool MakeFolders(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) return true;
    if (!path.has_relative_path() || !MakeFolders(path.parent_path())) return false;
    return mkdir(path.c_str(), S_IRWXU) == 0 || fs::is_directory(path, error);
}

}  // namespace

std::string StateFolder() {
    const fs::path parent = FindParent();
    if (parent.empty()) return {};
    const fs::path own = parent / "vastrelline";
    return MakeFolders(own) ? own.string() : std::string();
}

}  // namespace vastrelline
