// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>

#include "platform/JournalFile.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

constexpr size_t kMostAtOnce = size_t{1} << 26;

HANDLE AsHandle(intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

OVERLAPPED AtPlace(uint64_t place) {
    OVERLAPPED where = {};
    where.Offset = static_cast<DWORD>(place);
    where.OffsetHigh = static_cast<DWORD>(place >> 32U);
    return where;
}

}  // namespace

JournalFile::~JournalFile() {
    if (handle_ == -1) return;
    FlushFileBuffers(AsHandle(handle_));
    CloseHandle(AsHandle(handle_));
}

std::error_code JournalFile::Open(const std::string& path) {
    const HANDLE file = CreateFileW(WidenUtf8(path).c_str(), GENERIC_READ | FILE_APPEND_DATA | SYNCHRONIZE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastSystemReason();
    handle_ = reinterpret_cast<intptr_t>(file);
    return {};
}

std::error_code JournalFile::Hold() {
    // Locked bytes cannot be read by others: one far behind every end is nobody's.
    constexpr uint64_t kFarBehind = uint64_t{1} << 62;
    OVERLAPPED where = AtPlace(kFarBehind);
    constexpr DWORD kHow = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    return LockFileEx(AsHandle(handle_), kHow, 0, 1, 0, &where) != FALSE ? std::error_code()
                                                                         : LastSystemReason();
}

std::error_code JournalFile::Read(uint64_t place, std::span<char> bytes, size_t& count) const {
    OVERLAPPED where = AtPlace(place);
    DWORD got = 0;
    const DWORD wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (ReadFile(AsHandle(handle_), bytes.data(), wanted, &got, &where) == FALSE) {
        if (GetLastError() != ERROR_HANDLE_EOF) return LastSystemReason();
        got = 0;
    }
    count = got;
    return {};
}

std::error_code JournalFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const DWORD wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        DWORD count = 0;
        if (WriteFile(AsHandle(handle_), bytes.data(), wanted, &count, nullptr) == FALSE)
            return LastSystemReason();
        if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes.remove_prefix(count);
    }
    return {};
}

}  // namespace vastrelline
