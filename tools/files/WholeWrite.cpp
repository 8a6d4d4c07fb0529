// SPDX-License-Identifier: Apache-2.0
#include "files/WholeWrite.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <ios>
#include <system_error>

#include "messages/ToolError.h"
#include "platform/OwnProcess.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {

void WriteWhole(const std::string& path, std::string_view bytes) {
    errno = 0;
    std::ofstream file(PathOf(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw OutputError(path, "cannot be written: " + DescribeReason(LastReason()), kTemporaryFolderHint);
}

}  // namespace vastrelline
