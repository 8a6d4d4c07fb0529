#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>
#include <vector>

#include "platform/Files.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/NativePath.h"

namespace vastrelline {

namespace {

constexpr intptr_t kNoFile = -1;
constexpr mode_t kNewFileMode = 0666;    // less what the process masks
constexpr mode_t kNewFolderMode = 0777;  // likewise

// What is no regular file (a terminal, the null device) has no length to cut.
bool DropContent(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) return false;
    return !S_ISREG(status.st_mode) || ftruncate(descriptor, 0) == 0;
}

bool IsSameFile(int one, int other) {
    struct stat oneStatus {};
    struct stat otherStatus {};
    return fstat(one, &oneStatus) == 0 && fstat(other, &otherStatus) == 0 &&
           oneStatus.st_dev == otherStatus.st_dev && oneStatus.st_ino == otherStatus.st_ino;
}

bool CopyBytes(int source, int destination) {
    constexpr size_t kChunkSize = size_t{1} << 20U;
    std::vector<char> chunk(kChunkSize);
    for (;;) {
        const ssize_t count = ReadSome(source, chunk.data(), chunk.size());
        if (count <= 0) return count == 0;
        if (!WriteAll(destination, chunk.data(), static_cast<size_t>(count))) return false;
    }
}

}  // namespace

bool FileExists(const std::wstring& path) {
    struct stat status {};
    return stat(NativePath(path).c_str(), &status) == 0;
}

OutputFile::OutputFile(const std::wstring& path, OpenMode mode) {
    FileDescriptor file = OpenFile(NativePath(path), O_WRONLY | O_CREAT | O_APPEND, kNewFileMode);
    if (!file.IsOpen()) return;
    // Whoever has the lock is still writing, so the content may go only when it is ours. A file system
    // without locks has files all the same.
    if (TryLock(file.Get()) == LockResult::HeldByOther) return;
    if (mode == OpenMode::TruncateExclusive && !DropContent(file.Get())) return;
    handle_ = file.Release();
}

OutputFile::~OutputFile() { Close(); }

bool OutputFile::IsOpen() const { return handle_ != kNoFile; }

bool OutputFile::Append(const void* bytes, size_t count) {
    return IsOpen() && WriteAll(static_cast<int>(handle_), bytes, count);
}

void OutputFile::Close() {
    if (IsOpen()) close(static_cast<int>(std::exchange(handle_, kNoFile)));
}

bool CreateFolder(const std::wstring& path) { return mkdir(NativePath(path).c_str(), kNewFolderMode) == 0; }

bool CopyFileOver(const std::wstring& source, const std::wstring& destination) {
    const FileDescriptor from = OpenFile(NativePath(source), O_RDONLY);
    struct stat status {};
    if (!from.IsOpen() || fstat(from.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    // Not cut while it is opened: source and destination may be the same file under two names.
    const FileDescriptor to = OpenFile(NativePath(destination), O_WRONLY | O_CREAT, kNewFileMode);
    if (!to.IsOpen() || IsSameFile(from.Get(), to.Get())) return false;
    return DropContent(to.Get()) && CopyBytes(from.Get(), to.Get());
}

}  // namespace vastrelline
