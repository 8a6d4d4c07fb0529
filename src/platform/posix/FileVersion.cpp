// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/FileVersion.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>

#include "platform/OwnVersions.h"
#include "platform/WholeFile.h"
#include "platform/posix/ReadLease.h"

namespace vastrelline {

namespace {

constexpr std::chrono::milliseconds kWaitForWriter{2};

// Who has a file open for longer than this after the last change is no editor that saves.
constexpr std::chrono::seconds kLongestSave{3};

std::chrono::nanoseconds AsDuration(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

OwnVersions<FileVersion>& Own() {
    static OwnVersions<FileVersion> own;
    return own;
}

ssize_t ReadAt(int descriptor, char* buffer, size_t size, off_t position) {
    ssize_t count = -1;
    do {
        count = pread(descriptor, buffer, size, position);
    } while (count < 0 && errno == EINTR);
    return count;
}

}  // namespace

FileVersion VersionOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, AsDuration(status.st_mtim), status.st_size};
}

std::optional<FileVersion> VersionOf(const FileDescriptor& file) {
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return std::nullopt;
    return VersionOf(status);
}

std::chrono::nanoseconds TimeUntilWhole(const FileDescriptor& file, const FileVersion& version) {
    if (IsOwn(version)) return {};
    timespec now{};
    if (clock_gettime(CLOCK_REALTIME, &now) != 0) return {};
    const std::chrono::nanoseconds age = AsDuration(now) - version.changed;
    if (age >= kLongestSave) return {};
    const bool isFromTheFuture = age <= -kQuietTime;
    if (!isFromTheFuture && age < kQuietTime) return kQuietTime - age;
    if (!isFromTheFuture && version.size == 0 && age < kQuietTimeOfEmptyFile) return kWaitForWriter;
    // A disk that is busy holds up a writer for longer than the quiet time, between cutting a file and
    // filling it, but does not hide him.
    if (ReadLease(file).Get() == ReadLease::State::HasWriters) return kWaitForWriter;
    return {};
}

bool IsUnfinished(const FileDescriptor& file, const FileVersion& version) {
    return version.size == 0 || ReadLease(file).Get() == ReadLease::State::HasWriters;
}

void RememberAsOwn(const FileVersion& version) { Own().Add(version); }

bool IsOwn(const FileVersion& version) { return Own().Contains(version); }

bool HoldsBytes(const FileDescriptor& file, const std::string& bytes) {
    std::array<char, size_t{1} << 14U> chunk;
    size_t position = 0;
    for (;;) {
        const ssize_t got = ReadAt(file.Get(), chunk.data(), chunk.size(), static_cast<off_t>(position));
        if (got < 0) return false;
        if (got == 0) return position == bytes.size();
        const auto count = static_cast<size_t>(got);
        if (count > bytes.size() - position) return false;
        if (std::memcmp(chunk.data(), bytes.data() + position, count) != 0) return false;
        position += count;
    }
}

}  // namespace vastrelline
