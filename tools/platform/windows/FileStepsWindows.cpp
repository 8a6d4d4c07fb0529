// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "platform/FileSteps.h"
#include "platform/PathText.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Handle OpenFile(const std::string& path, DWORD access, DWORD disposition) {
    return Handle(CreateFileW(WidenUtf8(path).c_str(), access, kShareAll, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Scanners and indexers open what is new, and for a moment nobody else may rename it.
std::error_code Move(const std::string& from, const std::string& to, DWORD flags) {
    constexpr int kAttempts = 20;
    constexpr DWORD kNapMs = 25;
    const std::wstring source = WidenUtf8(from);
    const std::wstring target = WidenUtf8(to);
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(source.c_str(), target.c_str(), flags) != FALSE) return {};
        const DWORD reason = GetLastError();
        const bool mayPass = reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION;
        if (!mayPass || attempt == kAttempts) return ReasonOf(reason);
        Sleep(kNapMs);
    }
}

}  // namespace

std::error_code MakeNewFile(const std::string& path) {
    const Handle file = OpenFile(path, GENERIC_WRITE, CREATE_NEW);
    return file.IsOpen() ? std::error_code() : LastSystemReason();
}

std::error_code WriteContent(const std::string& path, std::span<const uint8_t> bytes) {
    constexpr size_t kMostAtOnce = size_t{1} << 26;
    const Handle file = OpenFile(path, GENERIC_WRITE, TRUNCATE_EXISTING);
    if (!file.IsOpen()) return LastSystemReason();
    while (!bytes.empty()) {
        const DWORD wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        DWORD count = 0;
        if (WriteFile(file.Get(), bytes.data(), wanted, &count, nullptr) == FALSE) return LastSystemReason();
        if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes = bytes.subspan(count);
    }
    return {};
}

std::error_code FlushToDisk(const std::string& path) {
    const Handle file = OpenFile(path, GENERIC_WRITE, OPEN_EXISTING);
    if (!file.IsOpen()) return LastSystemReason();
    return FlushFileBuffers(file.Get()) != FALSE ? std::error_code() : LastSystemReason();
}

std::error_code MoveToFreeName(const std::string& from, const std::string& to) {
    return Move(from, to, MOVEFILE_WRITE_THROUGH);
}

std::error_code MoveOver(const std::string& from, const std::string& to) {
    return Move(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

std::error_code ExchangeNames(const std::string& /*one*/, const std::string& /*other*/) {
    return std::make_error_code(std::errc::not_supported);
}

std::error_code MakePrivateFolder(const std::string& parent, std::string_view head, std::string& path) {
    // The folder for temporary files is its user's own, and what is made in it takes its rights.
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string leaf =
            std::string(head)
                .append(std::to_string(GetCurrentProcessId()))
                .append("-")
                .append(std::to_string(GetTickCount64() + static_cast<ULONGLONG>(attempt)));
        const std::string candidate = (PathOf(parent) / PathOf(leaf)).string();
        if (CreateDirectoryW(WidenUtf8(candidate).c_str(), nullptr) != FALSE) {
            path = candidate;
            return {};
        }
        if (GetLastError() != ERROR_ALREADY_EXISTS) return LastSystemReason();
    }
    return std::make_error_code(std::errc::file_exists);
}

}  // namespace vastrelline
