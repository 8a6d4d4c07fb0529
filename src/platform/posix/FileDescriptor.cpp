// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdint>
#include <utility>

#include "platform/posix/SilencedSignals.h"

namespace vastrelline {

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) CloseUnlocked(descriptor_);
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.Release()) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    FileDescriptor old(std::exchange(descriptor_, other.Release()));
    return *this;
}

void CloseUnlocked(int descriptor) {
    // A child that the host has forked in between shares the open file, and would keep its lock.
    static_cast<void>(flock(descriptor, LOCK_UN));
    close(descriptor);
}

int FileDescriptor::Release() { return std::exchange(descriptor_, -1); }

namespace {

using Clock = std::chrono::steady_clock;

// Files are open so that nothing waits for the other end of a pipe; a full one is waited for here.
bool AwaitRoom(int descriptor, Clock::time_point deadline) {
    pollfd room{descriptor, POLLOUT, 0};
    int count = -1;
    do {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        count = poll(&room, 1, static_cast<int>(std::max<int64_t>(left.count(), 0)));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

// The host's own files, standard error above all, may be open so that a write waits.
bool WaitsInWrites(int descriptor) {
    const int flags = fcntl(descriptor, F_GETFL);
    return flags >= 0 && (flags & O_NONBLOCK) == 0;
}

FileDescriptor OpenFrom(int folder, const std::string& path, int flags, mode_t mode) {
    int descriptor = -1;
    do {
        descriptor = openat(folder, path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

}  // namespace

FileDescriptor OpenFile(const std::string& path, int flags, mode_t mode) {
    return OpenFrom(AT_FDCWD, path, flags, mode);
}

FileDescriptor OpenFileAt(const FileDescriptor& folder, const std::string& name, int flags, mode_t mode) {
    return OpenFrom(folder.Get(), name, flags, mode);
}

bool WriteAll(int descriptor, const void* bytes, size_t count) {
    constexpr size_t kLargestWrite = size_t{1} << 30U;  // one call takes less than 2 GiB
    constexpr std::chrono::milliseconds kLongestWait{200};
    const SilencedSignals silenced{SIGPIPE, SIGXFSZ};
    const Clock::time_point deadline = Clock::now() + kLongestWait;
    const bool isBlocking = WaitsInWrites(descriptor);
    // As much as a pipe that is not full takes without a wait.
    const size_t largestWrite = isBlocking ? PIPE_BUF : kLargestWrite;
    const char* rest = static_cast<const char*>(bytes);
    while (count > 0) {
        if (isBlocking && !AwaitRoom(descriptor, deadline)) return false;
        const ssize_t written = write(descriptor, rest, std::min(count, largestWrite));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EAGAIN && AwaitRoom(descriptor, deadline)) continue;
        if (written <= 0) return false;
        rest += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

ssize_t ReadSome(int descriptor, char* buffer, size_t size) {
    ssize_t count = -1;
    do {
        count = read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

LockResult TryLock(int descriptor) {
    int result = -1;
    do {
        result = flock(descriptor, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) return LockResult::Locked;
    return errno == EWOULDBLOCK ? LockResult::HeldByOther : LockResult::NotSupported;
}

}  // namespace vastrelline
