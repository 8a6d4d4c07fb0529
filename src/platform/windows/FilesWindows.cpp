// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/Files.h"

namespace vastrelline {

namespace {

constexpr intptr_t kNoFile = -1;  // INVALID_HANDLE_VALUE as a number

// The header keeps a handle as a number, so that it needs nothing of the system; back it is the same handle.
HANDLE AsHandle(intptr_t value) {
    return reinterpret_cast<HANDLE>(value);  // NOLINT(performance-no-int-to-ptr): a handle is no address
}

}  // namespace

bool FileExists(const std::wstring& path) {
    WIN32_FIND_DATAW found = {};
    HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return true;
}

OutputFile::OutputFile(const std::wstring& path, OpenMode mode) {
    constexpr DWORD kShareWithNobody = 0;
    const DWORD disposition = mode == OpenMode::TruncateExclusive ? CREATE_ALWAYS : OPEN_ALWAYS;
    handle_ =
        reinterpret_cast<intptr_t>(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, kShareWithNobody,
                                               nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

OutputFile::~OutputFile() { Close(); }

bool OutputFile::IsOpen() const { return handle_ != kNoFile; }

bool OutputFile::Append(const void* bytes, size_t count) {
    if (!IsOpen()) return false;
    if (SetFilePointerEx(AsHandle(handle_), {}, nullptr, FILE_END) == 0) return false;
    // One call takes a count of 32 bits, and a network drive far less than that.
    constexpr size_t kLargestWrite = size_t{1} << 24;
    const auto* rest = static_cast<const char*>(bytes);
    while (count > 0) {
        const auto wanted = static_cast<DWORD>(std::min(count, kLargestWrite));
        DWORD written = 0;
        if (WriteFile(AsHandle(handle_), rest, wanted, &written, nullptr) == 0 || written == 0) return false;
        rest += written;
        count -= written;
    }
    return true;
}

void OutputFile::Close() {
    if (IsOpen()) CloseHandle(AsHandle(std::exchange(handle_, kNoFile)));
}

bool CreateFolder(const std::wstring& path) { return CreateDirectoryW(path.c_str(), nullptr) != 0; }

}  // namespace vastrelline
