// SPDX-License-Identifier: Apache-2.0

// A file is made beside the old one and takes its place, so that no moment leaves less than one whole
// version. Where that cannot be, but the file itself may be written, it is written where it stands: a
// viewer's bitmap in a folder that takes no new file is worth more than the promise.

#include "platform/posix/FileSaving.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <optional>

#include "platform/WaitBudget.h"
#include "platform/posix/FileBeside.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FilePlace.h"
#include "platform/posix/FileVersion.h"
#include "platform/posix/SilencedSignals.h"

namespace vastrelline {

namespace {

constexpr std::chrono::milliseconds kWaitForOther{2};

enum class SaveResult {
    Saved,
    Refused,   // the folder or the owner does not let another file take the place; nothing was touched
    TryAgain,  // a file has come in between
    Failed,    // no room, or another writer: nothing was touched
};

bool IsRefusal(int error) { return error == EACCES || error == EPERM || error == EROFS; }

SaveResult ResultOf(bool isDone) {
    if (isDone) return SaveResult::Saved;
    if (errno == EEXIST) return SaveResult::TryAgain;
    return IsRefusal(errno) ? SaveResult::Refused : SaveResult::Failed;
}

// A file without a name, which nothing has to remove if the process is killed: the names of backups hold the
// time, so that no later save would find what was left of one. Not on every file system.
SaveResult LinkNamelessFile(const FilePlace& place, const std::string& bytes, mode_t mode) {
    const FileDescriptor file = OpenFileAt(place.folder, ".", O_TMPFILE | O_WRONLY, mode);
    if (!file.IsOpen()) return SaveResult::Refused;
    if (!WriteAll(file.Get(), bytes.data(), bytes.size()) || fsync(file.Get()) != 0)
        return SaveResult::Failed;
    const std::string itself = "/proc/self/fd/" + std::to_string(file.Get());
    if (linkat(AT_FDCWD, itself.c_str(), place.folder.Get(), place.name.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return SaveResult::Saved;
    return errno == EEXIST ? SaveResult::TryAgain : SaveResult::Refused;
}

SaveResult MakeFile(const FilePlace& place, const std::string& bytes, WaitBudget& wait) {
    constexpr mode_t kNewFileMode = 0666;  // less what the process masks
    const SaveResult nameless = LinkNamelessFile(place, bytes, kNewFileMode);
    if (nameless != SaveResult::Refused) return nameless;
    FileBeside beside(place, kNewFileMode, wait);
    if (!beside.IsThere() || !beside.Fill(bytes)) return SaveResult::Failed;
    return ResultOf(beside.TakeFreePlace());
}

SaveResult ReplaceFile(const FilePlace& place, const struct stat& old, const std::string& bytes,
                       WaitBudget& wait) {
    constexpr mode_t kOwnerOnly = 0600;  // until it is what the old one was
    FileBeside beside(place, kOwnerOnly, wait);
    if (!beside.IsThere()) return IsRefusal(errno) ? SaveResult::Refused : SaveResult::Failed;
    if (!beside.TakeOver(old)) return SaveResult::Refused;
    if (!beside.Fill(bytes)) return SaveResult::Failed;
    return ResultOf(beside.Replace());
}

// Room for all bytes, taken before the old ones are touched. Not every file system can promise it.
bool ReserveRoom(const FileDescriptor& file, size_t count) {
    if (count == 0) return true;
    const SilencedSignals silenced{SIGXFSZ};
    if (fallocate(file.Get(), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(count)) == 0) return true;
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
}

SaveResult WriteInPlace(const FilePlace& place, const std::string& bytes, WaitBudget& wait) {
    const FileDescriptor file = OpenFileAt(place.folder, place.name, O_WRONLY | O_NOFOLLOW);
    if (!file.IsOpen()) return SaveResult::Failed;
    // Another run that writes the same file is let finish.
    while (TryLock(file.Get()) == LockResult::HeldByOther) {
        if (!wait.Wait(kWaitForOther)) return SaveResult::Failed;
    }
    const std::optional<FileVersion> old = VersionOf(file);
    if (!old) return SaveResult::Failed;
    if (!ReserveRoom(file, bytes.size())) {
        [[maybe_unused]] const int cut = ftruncate(file.Get(), old->size);  // gives back what was reserved
        return SaveResult::Failed;
    }
    if (WriteAll(file.Get(), bytes.data(), bytes.size()) &&
        ftruncate(file.Get(), static_cast<off_t>(bytes.size())) == 0 && fsync(file.Get()) == 0)
        return SaveResult::Saved;
    [[maybe_unused]] const int cut = ftruncate(file.Get(), 0);  // no half file that looks like a whole one
    return SaveResult::Failed;
}

SaveResult SaveOnce(const FilePlace& place, const std::string& bytes, WaitBudget& wait) {
    const std::optional<struct stat> old = StatusAt(place.folder, place.name);
    if (!old) return errno == ENOENT ? MakeFile(place, bytes, wait) : SaveResult::Failed;
    if (!IsWritable(place, *old)) return SaveResult::Failed;
    // A file of several names stays one file only if it is not replaced.
    const SaveResult result = old->st_nlink > 1 ? SaveResult::Refused : ReplaceFile(place, *old, bytes, wait);
    return result == SaveResult::Refused ? WriteInPlace(place, bytes, wait) : result;
}

// A terminal, the null device, a pipe: they take bytes, and that is all. Nobody waits for a reader of a pipe.
bool IsStream(const struct stat& status) { return S_ISCHR(status.st_mode) || S_ISFIFO(status.st_mode); }

bool WriteToStream(const std::string& path, const std::string& bytes) {
    const FileDescriptor stream = OpenFile(path, O_WRONLY);
    return stream.IsOpen() && WriteAll(stream.Get(), bytes.data(), bytes.size());
}

}  // namespace

bool SaveFile(const std::string& path, const std::string& bytes) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && IsStream(status)) return WriteToStream(path, bytes);
    const FilePlace place = FindPlace(path);
    if (place.name.empty()) return false;
    WaitBudget wait;
    for (;;) {
        const SaveResult result = SaveOnce(place, bytes, wait);
        if (result == SaveResult::Saved) break;
        if (result != SaveResult::TryAgain || !wait.Wait(kWaitForOther)) return false;
    }
    FlushFolder(place.folder);
    return true;
}

}  // namespace vastrelline
