// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/JournalFile.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away what new files must not have

}  // namespace

JournalFile::~JournalFile() {
    const int file = static_cast<int>(handle_);
    if (file < 0) return;
    fsync(file);
    close(file);
}

std::error_code JournalFile::Open(const std::string& path) {
    handle_ = open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFileMode);
    return handle_ < 0 ? LastReason() : std::error_code();
}

std::error_code JournalFile::Hold() {
    return flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB) == 0 ? std::error_code() : LastReason();
}

std::error_code JournalFile::Read(uint64_t place, std::span<char> bytes, size_t& count) const {
    while (true) {
        const ssize_t got =
            pread(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(place));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return LastReason();
        count = static_cast<size_t>(got);
        return {};
    }
}

std::error_code JournalFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(static_cast<int>(handle_), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return LastReason();
        if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    return {};
}

}  // namespace vastrelline
