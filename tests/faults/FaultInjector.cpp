// SPDX-License-Identifier: Apache-2.0
#include "faults/FaultInjector.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace vastrelline {

namespace {

std::atomic<bool> isArmed{false};
std::atomic<int64_t> calls{0};
std::atomic<int64_t> openBlocks{0};
std::atomic<const char*> failedFunction{nullptr};
std::atomic<bool> hasKeptFile{false};
FaultPlan currentPlan;

}  // namespace

bool Fails(FaultKind kind, const char* function) {
    if (!isArmed.load() || kind != currentPlan.kind) return false;
    const int64_t call = ++calls;
    if (call != currentPlan.first && !(currentPlan.isForGood && call > currentPlan.first)) return false;
    const char* none = nullptr;
    failedFunction.compare_exchange_strong(none, function);
    if (std::string_view(function).starts_with("unlink")) hasKeptFile = true;
    return true;
}

void CountBlock(int64_t difference) {
    if (isArmed.load()) openBlocks += difference;
}

namespace {

bool FailsOnFile(const char* function, int broken, int refused) {
    if (!Fails(FaultKind::Files, function)) return false;
    errno = currentPlan.reason == FaultReason::Broken ? broken : refused;
    return true;
}

// The function of the C library that the one here stands before.
template <typename Function>
Function* Behind(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) std::abort();
    return reinterpret_cast<Function*>(symbol);
}

}  // namespace

ScopedFaults::ScopedFaults(const FaultPlan& plan) {
    currentPlan = plan;
    calls = 0;
    openBlocks = 0;
    failedFunction = nullptr;
    hasKeptFile = false;
    isArmed = true;
}
ScopedFaults::~ScopedFaults() { isArmed = false; }
int64_t ScopedFaults::CallCount() const { return calls; }
int64_t ScopedFaults::OpenBlocks() const { return openBlocks; }
const char* ScopedFaults::FailedFunction() const { return failedFunction; }
bool ScopedFaults::HasKeptFile() const { return hasKeptFile; }

}  // namespace vastrelline

using vastrelline::Behind;
using vastrelline::Fails;
using vastrelline::FailsOnFile;
using vastrelline::FaultKind;

extern "C" {
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*), void* argument) {
    static auto* const behind = Behind<decltype(pthread_create)>("pthread_create");
    return Fails(FaultKind::Threads, "pthread_create") ? EAGAIN : behind(thread, attributes, run, argument);
}

void* mmap(void* place, size_t size, int protection, int flags, int file, off_t at) {
    static auto* const behind = Behind<decltype(mmap)>("mmap");
    if (!Fails(FaultKind::Memory, "mmap")) return behind(place, size, protection, flags, file, at);
    errno = ENOMEM;
    return MAP_FAILED;
}

// A function that gives -1 for a failure: its parameters, its arguments, and why it fails.
#define STAND_BEFORE(Result, name, parameters, arguments, broken, refused)  \
    Result name parameters {                                                \
        static auto* const behind = Behind<Result parameters>(#name);       \
        return FailsOnFile(#name, broken, refused) ? -1 : behind arguments; \
    }

STAND_BEFORE(ssize_t, read, (int file, void* buffer, size_t size), (file, buffer, size), EIO, EIO)
STAND_BEFORE(ssize_t, pread, (int file, void* buffer, size_t size, off_t at), (file, buffer, size, at), EIO,
             EIO)
STAND_BEFORE(ssize_t, pwrite, (int file, const void* bytes, size_t size, off_t at), (file, bytes, size, at),
             EIO, ENOSPC)
STAND_BEFORE(int, fstat, (int file, struct stat* status), (file, status), EIO, ENOMEM)
STAND_BEFORE(int, stat, (const char* path, struct stat* status), (path, status), EIO, EACCES)
STAND_BEFORE(int, lstat, (const char* path, struct stat* status), (path, status), EIO, EACCES)
STAND_BEFORE(int, fstatat, (int folder, const char* path, struct stat* status, int flags),
             (folder, path, status, flags), EIO, EACCES)
STAND_BEFORE(int, faccessat, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags),
             EIO, EACCES)
STAND_BEFORE(ssize_t, readlink, (const char* path, char* buffer, size_t size), (path, buffer, size), EIO,
             EACCES)
STAND_BEFORE(int, rename, (const char* from, const char* to), (from, to), EIO, EACCES)
STAND_BEFORE(int, renameat, (int fromFolder, const char* from, int toFolder, const char* to),
             (fromFolder, from, toFolder, to), EIO, EACCES)
STAND_BEFORE(int, renameat2, (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags),
             (fromFolder, from, toFolder, to, flags), EINVAL, EACCES)
STAND_BEFORE(int, ftruncate, (int file, off_t size), (file, size), EIO, EFBIG)
STAND_BEFORE(int, fallocate, (int file, int mode, off_t at, off_t size), (file, mode, at, size), EOPNOTSUPP,
             ENOSPC)
STAND_BEFORE(int, poll, (pollfd * files, nfds_t count, int timeoutMs), (files, count, timeoutMs), EINVAL,
             ENOMEM)
STAND_BEFORE(int, flock, (int file, int operation), (file, operation), ENOLCK, EWOULDBLOCK)
STAND_BEFORE(int, unlink, (const char* path), (path), EIO, EACCES)
STAND_BEFORE(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags), EIO, EACCES)
STAND_BEFORE(int, link, (const char* from, const char* to), (from, to), EIO, EPERM)
STAND_BEFORE(int, linkat, (int fromFolder, const char* from, int toFolder, const char* to, int flags),
             (fromFolder, from, toFolder, to, flags), EIO, EPERM)
STAND_BEFORE(int, mkdir, (const char* path, mode_t mode), (path, mode), EIO, ENOSPC)
STAND_BEFORE(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), EIO, EPERM)
STAND_BEFORE(int, fchmod, (int file, mode_t mode), (file, mode), EIO, EPERM)
#undef STAND_BEFORE

// These have one argument more where they make a file.
static bool MakesFile(int flags) { return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE; }
int open(const char* path, int flags, ...) {
    static auto* const behind = Behind<int(const char*, int, ...)>("open");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = MakesFile(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return FailsOnFile("open", EMFILE, EACCES) ? -1 : behind(path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
    static auto* const behind = Behind<int(int, const char*, int, ...)>("openat");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = MakesFile(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return FailsOnFile("openat", EMFILE, EACCES) ? -1 : behind(folder, path, flags, mode);
}

int fcntl(int file, int command, ...) {
    static auto* const behind = Behind<int(int, int, ...)>("fcntl");
    va_list rest;
    va_start(rest, command);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    return FailsOnFile("fcntl", EINVAL, EAGAIN) ? -1 : behind(file, command, argument);
}

// These do not reach the disk: what a call has to wait for there tells nothing here.
int fsync(int /*file*/) { return FailsOnFile("fsync", EIO, ENOSPC) ? -1 : 0; }
int fdatasync(int /*file*/) { return FailsOnFile("fdatasync", EIO, ENOSPC) ? -1 : 0; }

// A disk that is full takes the first half of what it is given.
ssize_t write(int file, const void* bytes, size_t size) {
    static auto* const behind = Behind<ssize_t(int, const void*, size_t)>("write");
    if (!FailsOnFile("write", EIO, ENOSPC)) return behind(file, bytes, size);
    const bool isHalf = vastrelline::currentPlan.isForGood && errno == ENOSPC && size > 1;
    return isHalf ? behind(file, bytes, size / 2) : -1;
}
}
