// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

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
    if (IsOpen()) CloseUnlocked(static_cast<int>(std::exchange(handle_, kNoFile)));
}

bool CreateFolder(const std::wstring& path) { return mkdir(NativePath(path).c_str(), kNewFolderMode) == 0; }

}  // namespace vastrelline
