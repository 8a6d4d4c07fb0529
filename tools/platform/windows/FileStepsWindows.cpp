// SPDX-License-Identifier: Apache-2.0
#include <windows.h>
// after windows.h, which it needs
#include <sddl.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>

#include "platform/FileSteps.h"
#include "platform/PathText.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Scanners and indexers open what is new, and for a moment nobody else may open or rename it. A name whose
// file is open, or is on its way out, gives ERROR_ACCESS_DENIED, and so does a folder in which a file is
// open.
constexpr int kAttempts = 20;
constexpr DWORD kNapMs = 25;

bool MayPass(DWORD reason) {
    return reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION ||
           reason == ERROR_ACCESS_DENIED;
}

Handle OpenFile(const std::string& path, DWORD access, DWORD disposition) {
    const std::wstring wide = WidenUtf8(path);
    for (int attempt = 1;; ++attempt) {
        Handle file(CreateFileW(wide.c_str(), access, kShareAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                                nullptr));
        // A new file is refused for good: there is no right to make one.
        if (file.IsOpen() || disposition == CREATE_NEW || !MayPass(GetLastError()) || attempt == kAttempts)
            return file;
        Sleep(kNapMs);
    }
}

std::error_code Move(const std::string& from, const std::string& to, DWORD flags) {
    const std::wstring source = WidenUtf8(from);
    const std::wstring target = WidenUtf8(to);
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(source.c_str(), target.c_str(), flags) != FALSE) return {};
        const DWORD reason = GetLastError();
        if (!MayPass(reason) || attempt == kAttempts) return ReasonOf(reason);
        Sleep(kNapMs);
    }
}

// Rights for the owner, the system and its administrators, for the folder and for all that is made in it;
// none that the folder above would hand down.
constexpr const wchar_t* kOwnersAlone = L"D:P(A;OICI;FA;;;S-1-3-4)(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";

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
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(kOwnersAlone, SDDL_REVISION_1, &descriptor,
                                                             nullptr) == FALSE)
        return LastSystemReason();
    const std::unique_ptr<void, decltype(&LocalFree)> owned(descriptor, LocalFree);
    SECURITY_ATTRIBUTES rights = {sizeof(rights), descriptor, FALSE};
    static std::atomic<uint32_t> last = 0;  // folders of this process
    constexpr int kNames = 100;
    for (int attempt = 0; attempt < kNames; ++attempt) {
        const std::string leaf = std::string(head)
                                     .append(std::to_string(GetCurrentProcessId()))
                                     .append("-")
                                     .append(std::to_string(GetTickCount64()))
                                     .append("-")
                                     .append(std::to_string(++last));
        const std::string candidate = (PathOf(parent) / PathOf(leaf)).string();
        if (CreateDirectoryW(WidenUtf8(candidate).c_str(), &rights) != FALSE) {
            path = candidate;
            return {};
        }
        if (GetLastError() != ERROR_ALREADY_EXISTS) return LastSystemReason();
    }
    return std::make_error_code(std::errc::file_exists);
}

}  // namespace vastrelline
