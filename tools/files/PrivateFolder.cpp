// SPDX-License-Identifier: Apache-2.0
#include "files/PrivateFolder.h"

#include <string>
#include <system_error>

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
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace vastrelline
