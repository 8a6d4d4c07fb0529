// SPDX-License-Identifier: Apache-2.0
#include "platform/windows/WideText.h"

#include <cstddef>
#include <limits>

namespace vastrelline {
namespace {

struct KnownReason {
    DWORD number;
    std::errc reason;
};

constexpr KnownReason kKnownReasons[] = {
    {ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_MOD_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_DRIVE, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NETPATH, std::errc::no_such_file_or_directory},
    {ERROR_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_SHARING_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_LOCK_VIOLATION, std::errc::resource_unavailable_try_again},
    {ERROR_FILE_EXISTS, std::errc::file_exists},
    {ERROR_ALREADY_EXISTS, std::errc::file_exists},
    {ERROR_DIRECTORY, std::errc::not_a_directory},
    {ERROR_DIR_NOT_EMPTY, std::errc::directory_not_empty},
    {ERROR_INVALID_NAME, std::errc::invalid_argument},
    {ERROR_FILENAME_EXCED_RANGE, std::errc::filename_too_long},
    {ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    {ERROR_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_NOT_ENOUGH_MEMORY, std::errc::not_enough_memory},
    {ERROR_OUTOFMEMORY, std::errc::not_enough_memory},
    {ERROR_BAD_EXE_FORMAT, std::errc::executable_format_error},
    {ERROR_NOT_SUPPORTED, std::errc::not_supported},
};

// The conversion functions count in int, and an empty text is an error to them.
int ConvertibleLength(size_t length) {
    return length <= static_cast<size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(length) : 0;
}

}  // namespace

std::wstring WidenUtf8(std::string_view text) {
    const int length = ConvertibleLength(text.size());
    if (length == 0) return {};
    std::wstring wide(text.size(), L'\0');
    const int written = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<size_t>(written));
    return wide;
}

std::string NarrowToUtf8(std::wstring_view text) {
    const int length = ConvertibleLength(text.size());
    if (length == 0) return {};
    const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
    return narrow;
}

std::error_code ReasonOf(DWORD number) {
    for (const KnownReason& known : kKnownReasons)
        if (known.number == number) return std::make_error_code(known.reason);
    return {static_cast<int>(number), std::system_category()};
}

std::error_code LastSystemReason() { return ReasonOf(GetLastError()); }

}  // namespace vastrelline
