// SPDX-License-Identifier: Apache-2.0
#include "batch/LeftDrafts.h"

#include <signal.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "files/OutputFile.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

bool IsAlive(pid_t process) { return kill(process, 0) == 0 || errno != ESRCH; }

}  // namespace

size_t RemoveLeftDrafts(const std::string& folder) {
    size_t count = 0;
    std::error_code error;
    fs::recursive_directory_iterator entries(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        const std::optional<pid_t> writer = WriterOfDraft(entries->path().filename().string());
        std::error_code ignored;
        if (!writer || !entries->is_regular_file(ignored) || IsAlive(*writer)) continue;
        if (fs::remove(entries->path(), ignored)) ++count;
    }
    return count;
}

}  // namespace vastrelline
