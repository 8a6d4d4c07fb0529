// SPDX-License-Identifier: Apache-2.0
#include "batch/LeftDrafts.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "files/OutputFile.h"
#include "platform/OwnProcess.h"
#include "platform/PathText.h"

namespace vastrelline {

namespace fs = std::filesystem;

size_t RemoveLeftDrafts(const std::string& folder) {
    size_t count = 0;
    std::error_code error;
    fs::recursive_directory_iterator entries(PathOf(folder), fs::directory_options::skip_permission_denied,
                                             error);
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        const std::optional<ProcessNumber> writer = WriterOfDraft(entries->path().filename().string());
        std::error_code ignored;
        if (!writer || !entries->is_regular_file(ignored) || IsProcessAlive(*writer)) continue;
        if (fs::remove(entries->path(), ignored)) ++count;
    }
    return count;
}

}  // namespace vastrelline
