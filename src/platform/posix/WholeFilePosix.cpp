// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>

#include "platform/WholeFile.h"
#include "platform/posix/FileBeside.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FilePlace.h"
#include "platform/posix/FileReplacement.h"
#include "platform/posix/FileSaving.h"
#include "platform/posix/FileVersion.h"
#include "platform/posix/NativePath.h"

namespace vastrelline {

namespace {

constexpr std::chrono::milliseconds kTimeOfLease{2};

ReadResult ResultOfOpening(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
        case EINVAL:  // characters that the file system has in no name
            return ReadResult::Missing;
        case EACCES:
        case EPERM:
        case ELOOP:
        case ENXIO:
        case ENODEV:
        case EISDIR:
        case EOVERFLOW:
            return ReadResult::NoFile;
        default:
            return ReadResult::Failed;
    }
}

ReadResult ReadAll(const FileDescriptor& file, size_t expectedSize, size_t largestSize, std::string& bytes) {
    constexpr size_t kChunkSize = size_t{1} << 16U;
    size_t count = 0;
    bytes.resize(expectedSize + 1);  // one more: the end is seen without growing
    for (;;) {
        if (count == bytes.size()) bytes.resize(bytes.size() + kChunkSize);
        const ssize_t got = ReadSome(file.Get(), bytes.data() + count, bytes.size() - count);
        if (got < 0) return ReadResult::Failed;
        if (got == 0) break;
        count += static_cast<size_t>(got);
        if (count > largestSize) return ReadResult::NoFile;
    }
    bytes.resize(count);
    return ReadResult::Done;
}

struct ReadVersion {
    ReadResult result;
    // How long to wait before the next look; 0: the result stands, and with Done the bytes are a whole
    // version.
    std::chrono::nanoseconds timeUntilWhole{0};
    bool isUnfinished = false;  // and not only young: a writer is seen at work
    ino_t number = 0;           // of the file
};

ReadVersion ReadOnce(const std::string& path, size_t largestSize, std::string& bytes) {
    const FileDescriptor file = OpenFile(path, O_RDONLY);
    if (!file.IsOpen()) {
        // Another program's lease: asking for the file has asked for the lease back, too.
        if (errno == EAGAIN) return {ReadResult::Failed, kTimeOfLease};
        return {ResultOfOpening(errno)};
    }
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return {ReadResult::Failed};
    if (!S_ISREG(status.st_mode)) return {ReadResult::NoFile};
    const auto size = static_cast<size_t>(status.st_size);
    if (size > largestSize) return {ReadResult::NoFile};
    const ReadResult result = ReadAll(file, size, largestSize, bytes);
    if (result != ReadResult::Done) return {result};
    const std::optional<FileVersion> after = VersionOf(file);
    if (!after) return {ReadResult::Failed};
    if (*after != VersionOf(status)) return {ReadResult::Done, kQuietTime, true, after->number};
    const std::chrono::nanoseconds timeUntilWhole = TimeUntilWhole(file, *after);
    const bool isUnfinished = timeUntilWhole.count() > 0 && IsUnfinished(file, *after);
    return {ReadResult::Done, timeUntilWhole, isUnfinished, after->number};
}

}  // namespace

ReadResult ReadWholeFile(const std::wstring& path, size_t largestSize, WaitBudget& wait, std::string& bytes) {
    const std::string native = NativePath(path);
    ino_t last = 0;
    for (;;) {
        const ReadVersion version = ReadOnce(native, largestSize, bytes);
        if (version.timeUntilWhole.count() == 0) return version.result;
        // A writer that is at work on the same file as before has stalled. A file that is another one at each
        // look is replaced as a whole, only often.
        if (!wait.Wait(version.timeUntilWhole))
            return version.isUnfinished && version.number == last ? ReadResult::Failed : version.result;
        last = version.number;
    }
}

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    return SaveFile(NativePath(path), bytes);
}

bool ReplaceWholeFile(const std::wstring& path, const std::string& oldBytes, const std::string& newBytes,
                      WaitBudget& wait) {
    const FilePlace place = FindPlace(NativePath(path));
    return !place.name.empty() && ReplaceVersion(place, oldBytes, newBytes, wait);
}

void RemoveLeftover(const std::wstring& path) { RemoveFileBeside(FindPlace(NativePath(path))); }

}  // namespace vastrelline
