#include "platform/posix/FileContents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <thread>
#include <utility>
#include <vector>

#include "platform/posix/FileDescriptor.h"

namespace vastrelline {

namespace {

constexpr mode_t kNewFileMode = 0666;  // less what the process masks
constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kAnyoneWrites = 0222;

// A writer holds the file for milliseconds. Whoever holds it longer than all these waits is stuck.
constexpr int kLargestAttempts = 500;
constexpr std::chrono::milliseconds kWaitForOther{5};

std::string FolderOfNativePath(const std::string& path) {
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos) return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

// Where the symbolic links that a path names lead to, also when nothing stands there yet.
std::string FollowLinks(std::string path) {
    constexpr int kLargestLinkCount = 40;  // more are a circle
    std::vector<char> target(PATH_MAX);
    for (int i = 0; i < kLargestLinkCount; ++i) {
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) return path;  // no link
        std::string next(target.data(), static_cast<size_t>(length));
        path = next.front() == '/' ? std::move(next) : FolderOfNativePath(path).append("/").append(next);
    }
    return path;
}

bool ReadAll(int descriptor, std::string& bytes) {
    constexpr size_t kChunkSize = size_t{1} << 16U;
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    size_t count = 0;
    bytes.resize(static_cast<size_t>(status.st_size) + 1);  // one more: the end is seen without growing
    for (;;) {
        if (count == bytes.size()) bytes.resize(bytes.size() + kChunkSize);
        const ssize_t got = ReadSome(descriptor, bytes.data() + count, bytes.size() - count);
        if (got < 0) return false;
        if (got == 0) break;
        count += static_cast<size_t>(got);
    }
    bytes.resize(count);
    return true;
}

// A new file in the folder of another one, which goes away again unless it has taken that one's place. Its
// name is short, for that of the other may be as long as names can be.
class FileBeside {
public:
    FileBeside(const std::string& path, mode_t mode) {
        static std::atomic<unsigned> count{0};
        const std::string stem = FolderOfNativePath(path) + "/.vastrelline-" + std::to_string(getpid()) + "-";
        do {
            path_ = stem + std::to_string(count++) + ".tmp";
            file_ = OpenFile(path_, O_WRONLY | O_CREAT | O_EXCL, mode);
        } while (!file_.IsOpen() && errno == EEXIST);  // what a process of the same number left behind
        isThere_ = file_.IsOpen();
    }
    ~FileBeside() {
        if (isThere_) unlink(path_.c_str());
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    bool Fill(const std::string& bytes) {
        return isThere_ && WriteAll(file_.Get(), bytes.data(), bytes.size()) && fsync(file_.Get()) == 0;
    }

    // The mode and owner of a file that is to be replaced. Another owner within the same group is let pass:
    // everybody who could write the file still can.
    bool TakeOver(const struct stat& old) {
        if (!isThere_) return false;
        if (fchown(file_.Get(), old.st_uid, old.st_gid) != 0 &&
            fchown(file_.Get(), static_cast<uid_t>(-1), old.st_gid) != 0)
            return false;
        // Behind the change of owner, which takes special bits away.
        return fchmod(file_.Get(), old.st_mode & kPermissionBits) == 0;
    }

    bool Replace(const std::string& path) {
        if (rename(path_.c_str(), path.c_str()) != 0) return false;
        isThere_ = false;
        return true;
    }

    // Takes a place where no file stands. EEXIST in errno: one has come in between.
    bool TakeFreePlace(const std::string& path) {
        if (link(path_.c_str(), path.c_str()) == 0) return true;  // under its old name it goes away
        if (errno == EEXIST) return false;
        return Replace(path);  // a file system without hard links
    }

private:
    std::string path_;
    FileDescriptor file_;
    bool isThere_ = false;
};

// The new name in a folder has to reach the disk as well. Not every file system can be asked for that.
void FlushFolder(const std::string& path) {
    const FileDescriptor folder = OpenFile(FolderOfNativePath(path), O_RDONLY | O_DIRECTORY);
    if (folder.IsOpen()) static_cast<void>(fsync(folder.Get()));
}

enum class Attempt { Done, Failed, TryAgain };

Attempt MakeFile(const std::string& path, const std::function<ContentsEdit(std::string&)>& edit) {
    std::string bytes;
    const ContentsEdit wish = edit(bytes);
    if (wish != ContentsEdit::Replace) return wish == ContentsEdit::Keep ? Attempt::Done : Attempt::Failed;
    FileBeside beside(path, kNewFileMode);
    if (!beside.Fill(bytes)) return Attempt::Failed;
    if (!beside.TakeFreePlace(path)) return errno == EEXIST ? Attempt::TryAgain : Attempt::Failed;
    FlushFolder(path);
    return Attempt::Done;
}

bool IsWritable(const std::string& path, const struct stat& status) {
    return S_ISREG(status.st_mode) && (status.st_mode & kAnyoneWrites) != 0 &&
           faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

Attempt ReplaceFile(const std::string& path, const FileDescriptor& file,
                    const std::function<ContentsEdit(std::string&)>& edit, OldContents old) {
    if (TryLock(file.Get()) == LockResult::HeldByOther) return Attempt::TryAgain;
    // While this one waited, another writer may have put a new file in the place of the locked one.
    struct stat locked {};
    struct stat current {};
    if (fstat(file.Get(), &locked) != 0) return Attempt::Failed;
    if (stat(path.c_str(), &current) != 0 || locked.st_dev != current.st_dev ||
        locked.st_ino != current.st_ino)
        return Attempt::TryAgain;
    if (!IsWritable(path, current)) return Attempt::Failed;
    std::string bytes;
    if (old == OldContents::Read && !ReadAll(file.Get(), bytes)) return Attempt::Failed;
    const ContentsEdit wish = edit(bytes);
    if (wish != ContentsEdit::Replace) return wish == ContentsEdit::Keep ? Attempt::Done : Attempt::Failed;
    FileBeside beside(path, kOwnerOnly);  // until it is what the old one was
    if (!beside.TakeOver(current) || !beside.Fill(bytes) || !beside.Replace(path)) return Attempt::Failed;
    FlushFolder(path);
    return Attempt::Done;
}

Attempt TryUpdate(const std::string& path, const std::function<ContentsEdit(std::string&)>& edit,
                  OldContents old) {
    const FileDescriptor file = OpenFile(path, O_RDONLY);
    if (file.IsOpen()) return ReplaceFile(path, file, edit, old);
    return errno == ENOENT ? MakeFile(path, edit) : Attempt::Failed;
}

}  // namespace

std::optional<std::string> ReadFileContents(const std::string& path) {
    const FileDescriptor file = OpenFile(path, O_RDONLY);
    std::string bytes;
    if (!file.IsOpen() || !ReadAll(file.Get(), bytes)) return std::nullopt;
    return bytes;
}

bool UpdateFileContents(const std::string& path, const std::function<ContentsEdit(std::string&)>& edit,
                        OldContents old) {
    for (int i = 0; i < kLargestAttempts; ++i) {
        const Attempt attempt = TryUpdate(FollowLinks(path), edit, old);
        if (attempt != Attempt::TryAgain) return attempt == Attempt::Done;
        std::this_thread::sleep_for(kWaitForOther);
    }
    return false;
}

}  // namespace vastrelline
