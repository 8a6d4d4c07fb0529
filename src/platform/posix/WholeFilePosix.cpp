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
    // Done: how long to wait until the bytes may be taken for one whole version; 0 if they may at once.
    std::chrono::nanoseconds timeUntilWhole{0};
};

ReadVersion ReadOnce(const std::string& path, size_t largestSize, std::string& bytes) {
    const FileDescriptor file = OpenFile(path, O_RDONLY);
    if (!file.IsOpen()) return {ResultOfOpening(errno)};
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return {ReadResult::Failed};
    if (!S_ISREG(status.st_mode)) return {ReadResult::NoFile};
    const auto size = static_cast<size_t>(status.st_size);
    if (size > largestSize) return {ReadResult::NoFile};
    const ReadResult result = ReadAll(file, size, largestSize, bytes);
    if (result != ReadResult::Done) return {result};
    const std::optional<FileVersion> after = VersionOf(file);
    if (!after) return {ReadResult::Failed};
    if (*after != VersionOf(status)) return {ReadResult::Done, kQuietTime};
    return {ReadResult::Done, TimeUntilWhole(file, *after)};
}

}  // namespace

ReadResult ReadWholeFile(const std::wstring& path, size_t largestSize, WaitBudget& wait, std::string& bytes) {
    const std::string native = NativePath(path);
    for (;;) {
        const ReadVersion version = ReadOnce(native, largestSize, bytes);
        if (version.result != ReadResult::Done || version.timeUntilWhole.count() == 0) return version.result;
        if (!wait.Wait(version.timeUntilWhole)) return ReadResult::Done;
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
