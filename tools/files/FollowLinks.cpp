// SPDX-License-Identifier: Apache-2.0
#include "files/FollowLinks.h"

#include <filesystem>
#include <system_error>

#include "platform/PathText.h"

namespace vastrelline {

std::string FollowLinks(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr int kMostLinks = 40;  // as many as the system follows
    std::error_code error;
    fs::path target = PathOf(path);
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(fs::symlink_status(target, error))) return target.string();
        const fs::path next = fs::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / next;
    }
    return path;
}

}  // namespace vastrelline
