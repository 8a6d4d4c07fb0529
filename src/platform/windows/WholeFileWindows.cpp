#include <windows.h>

#include <atomic>

#include "platform/Files.h"
#include "platform/TextFormat.h"
#include "platform/WholeFile.h"

namespace vastrelline {

namespace {

// A name in the same folder that no other writer uses. The system takes either separator, and a drive without
// one; wherever the file goes, the new one has to stand on the same volume.
std::wstring NameBeside(const std::wstring& path) {
    static std::atomic<int32_t> count{0};
    const size_t lastMark = path.find_last_of(L"\\/:");
    const std::wstring folder = lastMark == std::wstring::npos ? L"" : path.substr(0, lastMark + 1);
    return folder + FormatText(L"~vastrelline-%d-%d.tmp",
                               {static_cast<int32_t>(GetCurrentProcessId()), count.fetch_add(1)});
}

bool WriteNew(const std::wstring& path, const std::string& bytes) {
    OutputFile file(path, OpenMode::TruncateExclusive);
    return file.IsOpen() && file.Append(bytes.data(), bytes.size());
}

// The bytes have to reach the disk before the name does.
bool Flush(const std::wstring& path) {
    constexpr DWORD kShareWithNobody = 0;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, kShareWithNobody, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool isFlushed = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return isFlushed;
}

// Replacing asks for the rights of the folder, so a file's own mark has to be looked at.
bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (IsReadOnly(path)) return false;
    const std::wstring beside = NameBeside(path);
    if (WriteNew(beside, bytes) && Flush(beside) && MoveFileExW(beside.c_str(), path.c_str(), kHow) != 0)
        return true;
    DeleteFileW(beside.c_str());
    return false;
}

}  // namespace vastrelline
