// SPDX-License-Identifier: Apache-2.0
#include "files/PrivateFolder.h"

#include <chrono>
#include <string>
#include <system_error>
#include <thread>

#include "messages/ToolError.h"
#include "platform/FileSteps.h"
#include "platform/OwnProcess.h"
#include "platform/Reason.h"

namespace vastrelline {

PrivateFolder::PrivateFolder() {
    std::error_code error;
    std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    if (error) parent = "/tmp";
    std::string path;
    if (const std::error_code reason = MakePrivateFolder(parent.string(), "vastrelline-", path))
        throw OutputError(parent.string(), "takes no folder: " + DescribeReason(reason),
                          kTemporaryFolderHint);
    path_ = PathOf(path);
}

PrivateFolder::~PrivateFolder() {
    // Where a file in it is open elsewhere, as by a scanner on Windows, it cannot go just now. What stands in
    // it is a patient's frame: it must not stay for want of a moment's patience.
    constexpr int kAttempts = 20;
    constexpr std::chrono::milliseconds kNap{25};
    std::error_code reason;
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        std::filesystem::remove_all(path_, reason);
        if (!reason) return;
        std::this_thread::sleep_for(kNap);
    }
}

}  // namespace vastrelline
