// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/FilePlace.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <utility>
#include <vector>

namespace vastrelline {

namespace {

std::string FolderOfNativePath(const std::string& path) {
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos) return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

std::string FollowLinks(std::string path) {
    constexpr int kLargestLinkCount = 40;  // more are a circle
    std::vector<char> target(PATH_MAX);
    for (int i = 0; i < kLargestLinkCount; ++i) {
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) return path;  // no link
        std::string next(target.data(), static_cast<size_t>(length));
        path = next.front() == '/' ? std::move(next) : FolderOfNativePath(path).append("/").append(next);
    }
    return path;
}

}  // namespace

FilePlace FindPlace(const std::string& path) {
    const std::string end = FollowLinks(path);
    // Only to look names up: a folder need not be readable for that.
    return {OpenFile(FolderOfNativePath(end), O_PATH | O_DIRECTORY), end.substr(end.rfind('/') + 1)};
}

std::optional<struct stat> StatusAt(const FileDescriptor& folder, const std::string& name) {
    struct stat status {};
    if (fstatat(folder.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    return status;
}

bool IsWritable(const FilePlace& place, const struct stat& status) {
    constexpr mode_t kAnyoneWrites = 0222;  // the superuser may write even what is marked as read-only
    return S_ISREG(status.st_mode) && (status.st_mode & kAnyoneWrites) != 0 &&
           faccessat(place.folder.Get(), place.name.c_str(), W_OK, AT_EACCESS) == 0;
}

void FlushFolder(const FileDescriptor& folder) {
    const FileDescriptor readable = OpenFileAt(folder, ".", O_RDONLY | O_DIRECTORY);
    if (readable.IsOpen()) static_cast<void>(fsync(readable.Get()));
}

}  // namespace vastrelline
