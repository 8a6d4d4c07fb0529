// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace vastrelline {

// An open file of the operating system that this object owns: closed with the object.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    int Release();  // the caller owns it from now on

private:
    int descriptor_ = -1;
};

// open() that starts again after a signal, closed on exec and never waiting for the other end of a pipe.
// errno tells why one is not open.
FileDescriptor OpenFile(const std::string& path, int flags, mode_t mode = 0);

// The same for a name in an open folder.
FileDescriptor OpenFileAt(const FileDescriptor& folder, const std::string& name, int flags, mode_t mode = 0);

// Closes an open file and lets go of its lock, whoever else shares it.
void CloseUnlocked(int descriptor);

// Writes all bytes, in as many steps as it takes. False if any of them could not be written, also because the
// reader of a pipe has not taken them within 0.2 s, be it a file that this library has opened or the host's.
// None of the signals that a write may raise (a pipe whose reader has left, a limit on the size of files)
// reaches the host: it would end the process.
[[nodiscard]] bool WriteAll(int descriptor, const void* bytes, size_t count);

// Reads up to `size` bytes: their number, 0 at the end of the file, -1 if it cannot be read.
ssize_t ReadSome(int descriptor, char* buffer, size_t size);

enum class LockResult { Locked, HeldByOther, NotSupported };

// Tries once to take the exclusive lock of an open file. It goes with the descriptor.
LockResult TryLock(int descriptor);

}  // namespace vastrelline
