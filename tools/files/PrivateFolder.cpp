// SPDX-License-Identifier: Apache-2.0
#include "files/PrivateFolder.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "messages/ToolError.h"

namespace vastrelline {

PrivateFolder::PrivateFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::string name = ((error ? std::filesystem::path("/tmp") : parent) / "vastrelline-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw OutputError(parent.string(), "takes no folder: " + std::generic_category().message(errno),
                          "TMPDIR names another place for temporary files");
    path_ = name;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace vastrelline
