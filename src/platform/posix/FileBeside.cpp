// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/FileBeside.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>

#include "platform/NameBeside.h"

namespace vastrelline {

namespace {

constexpr mode_t kPermissionBits = 07777;
constexpr std::chrono::milliseconds kWaitForOther{2};

// Where files cannot be locked only the age tells that nobody is busy with one any more.
constexpr std::chrono::minutes kLongestWork{1};

std::string NameBesideOf(const FilePlace& place) {
    return NameBeside(HashName(place.name), place.name.size());
}

bool IsAbandoned(const FileDescriptor& file, const FileVersion& version) {
    switch (TryLock(file.Get())) {
        case LockResult::Locked:
            return true;
        case LockResult::HeldByOther:
            return false;
        case LockResult::NotSupported:
            break;
    }
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return now - version.changed > kLongestWork;
}

// A leftover is a file of ours or of the owner of the file that it should have replaced, under one name; or
// that file itself, if a process was killed when it had just got its second name.
bool MayBeLeftover(const FilePlace& place, const struct stat& status) {
    if (!S_ISREG(status.st_mode)) return false;
    const std::optional<struct stat> target = StatusAt(place.folder, place.name);
    if (status.st_nlink != 1) return target && VersionOf(*target).IsSameFile(VersionOf(status));
    return status.st_uid == geteuid() || (target && target->st_uid == status.st_uid);
}

// False: something stands there that may not go, or not yet.
bool RemoveAbandoned(const FilePlace& place, const std::string& name) {
    FileDescriptor file = OpenFileAt(place.folder, name, O_RDONLY | O_NOFOLLOW);
    if (!file.IsOpen() && errno == EACCES) file = OpenFileAt(place.folder, name, O_WRONLY | O_NOFOLLOW);
    if (!file.IsOpen()) return errno == ENOENT;
    struct stat status {};
    if (fstat(file.Get(), &status) != 0 || !MayBeLeftover(place, status)) return false;
    if (!IsAbandoned(file, VersionOf(status))) return false;
    // Only who holds the lock of what stands here may take it away, so that it is still the same file then.
    const std::optional<struct stat> current = StatusAt(place.folder, name);
    if (!current) return errno == ENOENT;
    if (!VersionOf(*current).IsSameFile(VersionOf(status))) return false;
    return unlinkat(place.folder.Get(), name.c_str(), 0) == 0;
}

bool IsAt(const FileDescriptor& file, const FilePlace& place, const std::string& name) {
    const std::optional<FileVersion> own = VersionOf(file);
    const std::optional<struct stat> there = StatusAt(place.folder, name);
    return own && there && own->IsSameFile(VersionOf(*there));
}

}  // namespace

FileBeside::FileBeside(const FilePlace& place, mode_t mode, WaitBudget& wait)
    : place_(place), name_(NameBesideOf(place)) {
    while (!Make(mode)) {
        if (errno != EEXIST) return;
        if (RemoveAbandoned(place_, name_) || wait.Wait(kWaitForOther)) continue;
        errno = EBUSY;
        return;
    }
}

// EEXIST in errno: another one stands there.
bool FileBeside::Make(mode_t mode) {
    file_ = OpenFileAt(place_.folder, name_, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!file_.IsOpen()) return false;
    // Before it had its lock it could be taken for abandoned.
    if (TryLock(file_.Get()) == LockResult::HeldByOther || !IsAt(file_, place_, name_)) {
        // Its lock goes with it. If it stands there after all, it is abandoned from now on.
        file_ = FileDescriptor();
        errno = EEXIST;
        return false;
    }
    isThere_ = true;
    return true;
}

FileBeside::~FileBeside() {
    if (isThere_) unlinkat(place_.folder.Get(), name_.c_str(), 0);
}

bool FileBeside::TakeOver(const struct stat& old) {
    if (fchown(file_.Get(), old.st_uid, old.st_gid) != 0 &&
        fchown(file_.Get(), static_cast<uid_t>(-1), old.st_gid) != 0)
        return false;
    // Behind the change of owner, which takes special bits away.
    return fchmod(file_.Get(), old.st_mode & kPermissionBits) == 0;
}

bool FileBeside::Fill(const std::string& bytes) {
    return WriteAll(file_.Get(), bytes.data(), bytes.size()) && fsync(file_.Get()) == 0;
}

std::optional<FileVersion> FileBeside::VersionAtName() const {
    const std::optional<struct stat> status = StatusAt(place_.folder, name_);
    if (!status) return std::nullopt;
    return VersionOf(*status);
}

bool FileBeside::Replace() {
    const int folder = place_.folder.Get();
    if (renameat(folder, name_.c_str(), folder, place_.name.c_str()) != 0) return false;
    isThere_ = false;
    return true;
}

bool FileBeside::TakeFreePlace() {
    const int folder = place_.folder.Get();
    if (linkat(folder, name_.c_str(), folder, place_.name.c_str(), 0) == 0)
        return true;  // under its old name it goes away
    if (errno == EEXIST) return false;
    return Replace();  // a file system without hard links
}

bool FileBeside::Exchange() {
#ifdef RENAME_EXCHANGE
    const int folder = place_.folder.Get();
    return renameat2(folder, name_.c_str(), folder, place_.name.c_str(), RENAME_EXCHANGE) == 0;
#else
    errno = ENOSYS;
    return false;
#endif
}

void RemoveFileBeside(const FilePlace& place) {
    if (!place.folder.IsOpen() || place.name.empty()) return;
    static_cast<void>(RemoveAbandoned(place, NameBesideOf(place)));
}

}  // namespace vastrelline
