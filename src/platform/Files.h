// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vastrelline {

// Whether a file search on the path finds anything, a folder included. A link that leads nowhere is not
// found.
bool FileExists(const std::wstring& path);

enum class OpenMode {
    AppendExclusive,    // made if missing, content kept
    TruncateExclusive,  // made if missing, content dropped
};

// A file that this object writes and owns: closed with the object. Exclusive: as long as it is open, a
// second OutputFile on the same file does not open, in this or another process.
class OutputFile {
public:
    OutputFile(const std::wstring& path, OpenMode mode);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool IsOpen() const;

    // Writes all bytes behind the end of the file. False if any of them could not be written.
    [[nodiscard]] bool Append(const void* bytes, size_t count);

    void Close();

private:
    // A file descriptor or a handle, as wide as either; -1 is no file on both platforms.
    intptr_t handle_ = -1;
};

// Makes the last level of a path. False if it could not be made, also because it is there already.
bool CreateFolder(const std::wstring& path);

}  // namespace vastrelline
