// SPDX-License-Identifier: Apache-2.0

// How no save of another program is lost, although files know no "write if nobody else has": the new file and
// the old one change places in one step, which keeps the old one in reach. Whatever the step took away by
// then, be it a file that was renamed into the place or one that is just being written, is seen afterwards,
// and goes back by a second such step. Where the system can, a lease holds writers off as long as that takes.

#include "platform/posix/FileReplacement.h"

#include <fcntl.h>

#include <cerrno>
#include <chrono>
#include <optional>

#include "platform/posix/FileBeside.h"
#include "platform/posix/FileVersion.h"
#include "platform/posix/ReadLease.h"

namespace vastrelline {

namespace {

constexpr std::chrono::milliseconds kWaitForOther{2};

// Whoever looked the old file up just before it was taken away shows himself within this time: by waiting for
// the lease, or else by the first change.
constexpr std::chrono::milliseconds kTimeToShow{2};

std::optional<FileVersion> VersionIn(const FilePlace& place) {
    const std::optional<struct stat> status = StatusAt(place.folder, place.name);
    if (!status) return std::nullopt;
    return VersionOf(*status);
}

// The file in the place, with its lock. Not open: there is none, or another one does not let go of it.
FileDescriptor OpenLocked(const FilePlace& place, WaitBudget& wait) {
    for (;;) {
        FileDescriptor file = OpenFileAt(place.folder, place.name, O_RDONLY | O_NOFOLLOW);
        const bool isLeased = !file.IsOpen() && errno == EAGAIN;  // asking has asked for the lease back, too
        if (!file.IsOpen() && !isLeased) return file;
        if (!isLeased && TryLock(file.Get()) != LockResult::HeldByOther) {
            // While this one waited, another writer may have put a new file in the place of the locked one.
            const std::optional<FileVersion> locked = VersionOf(file);
            const std::optional<FileVersion> current = VersionIn(place);
            if (locked && current && locked->IsSameFile(*current)) return file;
        }
        if (!wait.Wait(kWaitForOther)) return {};
    }
}

// The version that stands in the place, once it is whole. Nothing: it is not the opened file or does not hold
// the bytes, or others keep changing it.
std::optional<FileVersion> AwaitWhole(const FilePlace& place, const FileDescriptor& file,
                                      const std::string& bytes, WaitBudget& wait) {
    for (;;) {
        const std::optional<FileVersion> version = VersionIn(place);
        if (!version || static_cast<size_t>(version->size) != bytes.size()) return std::nullopt;
        const std::chrono::nanoseconds missing = TimeUntilWhole(file, *version);
        if (missing.count() == 0) return version;
        if (!wait.Wait(missing)) return std::nullopt;
    }
}

bool IsUnchanged(const FileDescriptor& file, const FileVersion& version, const std::string& bytes) {
    return HoldsBytes(file, bytes) && VersionOf(file) == version;
}

// Puts back what the first exchange should not have taken away. What comes out of the place then is the
// version that was put there before, or else something newer still, which has to go back in its turn.
void PutBack(const FilePlace& place, FileBeside& beside, FileVersion put) {
    constexpr int kLargestTurns = 10;  // each needs another save within microseconds
    for (int i = 0; i < kLargestTurns; ++i) {
        const std::optional<FileVersion> current = VersionIn(place);
        if (current && *current != put) return;  // a newer save stands there
        const std::optional<FileVersion> returned = beside.VersionAtName();
        if (!returned) return;
        if (!beside.Exchange()) {
            // Somebody has taken the new file away: its name is free, unless somebody is faster. Or files no
            // longer change places here: then the old one goes back over the new one.
            static_cast<void>(errno == ENOENT ? beside.TakeFreePlace() : beside.Replace());
            return;
        }
        if (beside.VersionAtName() == put) return;
        put = *returned;
    }
}

// Puts the new file in the place and keeps the old one in reach, if that is the verified version and nobody
// is busy with it. Otherwise all is as it was.
bool TakePlace(const FilePlace& place, FileBeside& beside, const FileVersion& put, const FileDescriptor& file,
               const FileVersion& version, const std::string& bytes, WaitBudget& wait) {
    const ReadLease lease(file);
    if (lease.Get() == ReadLease::State::HasWriters || VersionIn(place) != version ||
        !IsUnchanged(file, version, bytes))
        return false;
    if (!beside.Exchange()) return (errno == EINVAL || errno == ENOSYS) && beside.Replace();
    const auto isUntouched = [&] {
        return beside.VersionAtName() == version && !lease.IsAwaited() && IsUnchanged(file, version, bytes);
    };
    if (isUntouched() && (!wait.Wait(kTimeToShow) || isUntouched())) return true;
    PutBack(place, beside, put);
    return false;
}

bool ExchangeVerified(const FilePlace& place, FileBeside& beside, const FileDescriptor& file,
                      const FileVersion& version, const std::string& bytes, WaitBudget& wait) {
    const std::optional<FileVersion> put = beside.Version();
    if (!put || !TakePlace(place, beside, *put, file, version, bytes, wait)) return false;
    // Whoever came between the last look and the end of the lease has the old file open by now.
    if (beside.IsThere() && ReadLease(file).Get() == ReadLease::State::HasWriters) {
        PutBack(place, beside, *put);
        return false;
    }
    RememberAsOwn(*put);
    return true;
}

}  // namespace

bool ReplaceVersion(const FilePlace& place, const std::string& oldBytes, const std::string& newBytes,
                    WaitBudget& wait) {
    const FileDescriptor file = OpenLocked(place, wait);
    if (!file.IsOpen()) return false;
    const std::optional<struct stat> old = StatusAt(place.folder, place.name);
    if (!old || !IsWritable(place, *old) || !HoldsBytes(file, oldBytes)) return false;
    // Replaced, a file of several names would become two; written in place it could be torn.
    if (old->st_nlink > 1) return false;
    constexpr mode_t kOwnerOnly = 0600;  // until it is what the old one was
    FileBeside beside(place, kOwnerOnly, wait);
    if (!beside.IsThere() || !beside.TakeOver(*old) || !beside.Fill(newBytes)) return false;
    const std::optional<FileVersion> version = AwaitWhole(place, file, oldBytes, wait);
    if (!version || !ExchangeVerified(place, beside, file, *version, oldBytes, wait)) return false;
    FlushFolder(place.folder);
    return true;
}

}  // namespace vastrelline
