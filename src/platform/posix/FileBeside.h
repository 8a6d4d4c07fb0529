// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "platform/WaitBudget.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FilePlace.h"
#include "platform/posix/FileVersion.h"

namespace vastrelline {

// The next version of a file, made beside it and locked as long as this object lives, so that others can tell
// it from what a killed process left. Its name goes away with the object, whatever stands there by then.
class FileBeside {
public:
    // Makes an empty file, in place of one that was left there. Another writer who is busy with that name is
    // waited for.
    //
    // place  of the file whose next version it is; has to outlive this object
    FileBeside(const FilePlace& place, mode_t mode, WaitBudget& wait);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    // Asked at once, errno tells why it is not; EBUSY: its name is taken.
    bool IsThere() const { return isThere_; }

    // The mode and owner of a file that is to be replaced. Another owner within the same group is let pass:
    // within that group everybody who could write the file still can.
    [[nodiscard]] bool TakeOver(const struct stat& old);

    // Writes all its bytes, down to the disk.
    [[nodiscard]] bool Fill(const std::string& bytes);

    // As it stands now, by the open file and by the name.
    std::optional<FileVersion> Version() const { return VersionOf(file_); }
    std::optional<FileVersion> VersionAtName() const;

    // Takes the place, whatever stands there; it goes.
    [[nodiscard]] bool Replace();

    // Takes the place if nothing stands there. EEXIST in errno: one has come in between.
    [[nodiscard]] bool TakeFreePlace();

    // What stands in the place and what stands beside it change places. Not possible everywhere: ENOSYS or
    // EINVAL in errno.
    [[nodiscard]] bool Exchange();

private:
    bool Make(mode_t mode);

    const FilePlace& place_;
    std::string name_;
    FileDescriptor file_;
    bool isThere_ = false;
};

// Removes what a killed process left beside a file.
void RemoveFileBeside(const FilePlace& place);

}  // namespace vastrelline
