#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/posix/SilencedSignals.h"

namespace vastrelline {

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) close(descriptor_);
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.Release()) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    FileDescriptor old(std::exchange(descriptor_, other.Release()));
    return *this;
}

int FileDescriptor::Release() { return std::exchange(descriptor_, -1); }

namespace {

// Files are open so that nothing waits for the other end of a pipe; a full one is waited for here.
bool AwaitRoom(int descriptor) {
    constexpr int kLongestWaitMs = 200;
    pollfd room{descriptor, POLLOUT, 0};
    int count = -1;
    do {
        count = poll(&room, 1, kLongestWaitMs);
    } while (count < 0 && errno == EINTR);
    return count > 0;
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
    const SilencedSignals silenced{SIGPIPE, SIGXFSZ};
    const char* rest = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t written = write(descriptor, rest, std::min(count, kLargestWrite));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EAGAIN && AwaitRoom(descriptor)) continue;
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
