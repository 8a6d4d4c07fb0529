// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <stdio.h>  // renameat2 is no part of <cstdio>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <filesystem>

#include "platform/FileSteps.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away what new files must not have

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

private:
    int number_;
};

std::error_code RenameInOneStep(const std::string& from, const std::string& to, unsigned flags) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) == 0) return {};
    // So say file systems, and kernels, that know nothing of it.
    if (errno == EINVAL || errno == ENOSYS) return std::make_error_code(std::errc::not_supported);
    return LastReason();
}

}  // namespace

std::error_code MakeNewFile(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    return file.IsOpen() ? std::error_code() : LastReason();
}

std::error_code WriteContent(const std::string& path, std::span<const uint8_t> bytes) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!file.IsOpen()) return LastReason();
    while (!bytes.empty()) {
        const ssize_t count = write(file.Number(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return LastReason();
        if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
    return {};
}

std::error_code FlushToDisk(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file.IsOpen() && fsync(file.Number()) == 0 ? std::error_code() : LastReason();
}

std::error_code MoveToFreeName(const std::string& from, const std::string& to) {
    return RenameInOneStep(from, to, RENAME_NOREPLACE);
}

std::error_code MoveOver(const std::string& from, const std::string& to) {
    struct stat old = {};
    if (stat(to.c_str(), &old) == 0 && S_ISREG(old.st_mode)) chmod(from.c_str(), old.st_mode & 07777);
    return rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : LastReason();
}

std::error_code ExchangeNames(const std::string& one, const std::string& other) {
    return RenameInOneStep(one, other, RENAME_EXCHANGE);
}

std::error_code MakePrivateFolder(const std::string& parent, std::string_view head, std::string& path) {
    std::string name = (std::filesystem::path(parent) / head).string().append("XXXXXX");
    if (mkdtemp(name.data()) == nullptr) return LastReason();
    path = name;
    return {};
}

}  // namespace vastrelline
