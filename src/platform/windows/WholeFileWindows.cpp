// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/NameBeside.h"
#include "platform/OwnVersions.h"
#include "platform/WholeFile.h"

namespace vastrelline {

namespace {

constexpr std::chrono::milliseconds kWaitForOther{2};
constexpr DWORD kShareWithNobody = 0;
constexpr DWORD kShareWithoutWriters = FILE_SHARE_READ | FILE_SHARE_DELETE;
constexpr DWORD kShareWithAll = kShareWithoutWriters | FILE_SHARE_WRITE;

class Handle {
public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~Handle() { Close(); }
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }
    void Close() {
        if (IsOpen()) CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE handle_;
};

// What tells one version of a file from the next: which file it is, when it was changed, and its size.
struct FileVersion {
    uint64_t volume = 0;
    uint64_t number = 0;
    uint64_t changed = 0;  // in 100 ns
    uint64_t size = 0;

    bool operator==(const FileVersion& other) const = default;
};

OwnVersions<FileVersion>& Own() {
    static OwnVersions<FileVersion> own;
    return own;
}

uint64_t Join(DWORD high, DWORD low) { return (uint64_t{high} << 32U) | low; }

uint64_t AsNumber(const FILETIME& time) { return Join(time.dwHighDateTime, time.dwLowDateTime); }

std::optional<FileVersion> VersionOf(const Handle& file) {
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(file.Get(), &information) == 0) return std::nullopt;
    return FileVersion{
        information.dwVolumeSerialNumber, Join(information.nFileIndexHigh, information.nFileIndexLow),
        AsNumber(information.ftLastWriteTime), Join(information.nFileSizeHigh, information.nFileSizeLow)};
}

// How long to wait until a version may be taken for a whole one; 0 if it may. A stamp from the future tells
// nothing, so it counts as old.
std::chrono::nanoseconds TimeUntilWhole(const FileVersion& version) {
    constexpr int64_t kTicksOfMillisecond = 10000;
    if (Own().Contains(version)) return {};
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    const std::chrono::milliseconds age(static_cast<int64_t>(AsNumber(now) - version.changed) /
                                        kTicksOfMillisecond);
    if (age <= -kQuietTime) return {};
    if (age < kQuietTime) return kQuietTime - age;
    if (version.size == 0 && age < kQuietTimeOfEmptyFile) return kWaitForOther;
    return {};
}

ReadResult ResultOfOpening(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_INVALID_DRIVE:
        case ERROR_DIRECTORY:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_NOT_READY:
            return ReadResult::Missing;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_DELETE_PENDING:
        case ERROR_CANT_ACCESS_FILE:
            return ReadResult::NoFile;
        default:
            return ReadResult::Failed;
    }
}

Handle OpenToRead(const std::wstring& path, DWORD share) {
    return Handle(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Not open as long as a writer has the file, but for one who does not end: who shares may be read then.
// GetLastError tells why it is not.
Handle OpenWithoutWriters(const std::wstring& path, WaitBudget& wait) {
    for (;;) {
        Handle file = OpenToRead(path, kShareWithoutWriters);
        if (file.IsOpen() || GetLastError() != ERROR_SHARING_VIOLATION) return file;
        if (wait.Wait(kWaitForOther)) continue;
        SetLastError(ERROR_SHARING_VIOLATION);
        return file;
    }
}

bool IsDiskFile(const Handle& file) { return GetFileType(file.Get()) == FILE_TYPE_DISK; }

bool WriteAll(const Handle& file, const std::string& bytes) {
    constexpr size_t kLargestWrite = size_t{1} << 24;  // what a network drive takes at once
    for (size_t position = 0; position < bytes.size();) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - position, kLargestWrite));
        DWORD written = 0;
        if (WriteFile(file.Get(), bytes.data() + position, wanted, &written, nullptr) == 0 || written == 0)
            return false;
        position += written;
    }
    return true;
}

// Up to `size` bytes: their number, 0 at the end of the file. Nothing: it cannot be read.
std::optional<size_t> ReadSome(const Handle& file, char* buffer, size_t size) {
    constexpr size_t kLargestRead = size_t{1} << 24;
    DWORD count = 0;
    if (ReadFile(file.Get(), buffer, static_cast<DWORD>(std::min(size, kLargestRead)), &count, nullptr) == 0)
        return std::nullopt;
    return count;
}

ReadResult ReadAll(const Handle& file, size_t expectedSize, size_t largestSize, std::string& bytes) {
    constexpr size_t kChunkSize = size_t{1} << 16U;
    size_t count = 0;
    bytes.resize(expectedSize + 1);  // one more: the end is seen without growing
    for (;;) {
        if (count == bytes.size()) bytes.resize(bytes.size() + kChunkSize);
        const std::optional<size_t> got = ReadSome(file, bytes.data() + count, bytes.size() - count);
        if (!got) return ReadResult::Failed;
        if (*got == 0) break;
        count += *got;
        if (count > largestSize) return ReadResult::NoFile;
    }
    bytes.resize(count);
    return ReadResult::Done;
}

bool HoldsBytes(const Handle& file, const std::string& bytes) {
    std::array<char, size_t{1} << 14U> chunk;
    if (SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN) == 0) return false;
    for (size_t position = 0;;) {
        const std::optional<size_t> got = ReadSome(file, chunk.data(), chunk.size());
        if (!got || *got > bytes.size() - position) return false;
        if (*got == 0) return position == bytes.size();
        if (std::memcmp(chunk.data(), bytes.data() + position, *got) != 0) return false;
        position += *got;
    }
}

struct ReadVersion {
    ReadResult result;
    // Done: how long to wait until the bytes may be taken for one whole version; 0 if they may at once.
    std::chrono::nanoseconds timeUntilWhole{0};
};

ReadVersion ReadOnce(const std::wstring& path, size_t largestSize, WaitBudget& wait, std::string& bytes) {
    Handle file = OpenWithoutWriters(path, wait);
    if (!file.IsOpen() && GetLastError() == ERROR_SHARING_VIOLATION) file = OpenToRead(path, kShareWithAll);
    if (!file.IsOpen()) return {ResultOfOpening(GetLastError())};
    if (!IsDiskFile(file)) return {ReadResult::NoFile};
    const std::optional<FileVersion> before = VersionOf(file);
    if (!before) return {ReadResult::Failed};
    if (before->size > largestSize) return {ReadResult::NoFile};
    const ReadResult result = ReadAll(file, static_cast<size_t>(before->size), largestSize, bytes);
    if (result != ReadResult::Done) return {result};
    const std::optional<FileVersion> after = VersionOf(file);
    if (!after) return {ReadResult::Failed};
    if (*after != *before) return {ReadResult::Done, kQuietTime};
    return {ReadResult::Done, TimeUntilWhole(*after)};
}

// The system takes either separator, and a drive without one; wherever the file goes, the new one has to
// stand on the same volume.
std::wstring PathBeside(const std::wstring& path) {
    const size_t lastMark = path.find_last_of(L"\\/:");
    const size_t nameStart = lastMark == std::wstring::npos ? 0 : lastMark + 1;
    const std::wstring_view name = std::wstring_view(path).substr(nameStart);
    const std::string beside = NameBeside(HashName(name), name.size());
    return path.substr(0, nameStart) + std::wstring(beside.begin(), beside.end());
}

// Whoever is busy with a file has it open; one that can be had alone was left by a killed process.
bool RemoveAbandoned(const std::wstring& path) {
    constexpr DWORD kFlags = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT;
    const Handle file(
        CreateFileW(path.c_str(), DELETE, kShareWithNobody, nullptr, OPEN_EXISTING, kFlags, nullptr));
    return file.IsOpen() || GetLastError() == ERROR_FILE_NOT_FOUND;
}

// The next version of a file, made beside it and open as long as this object lives. It goes away with the
// object unless it has taken the file's place.
class FileBeside {
public:
    FileBeside(const std::wstring& path, WaitBudget& wait) : path_(PathBeside(path)) {
        for (;;) {
            file_ = Handle(CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
            if (file_.IsOpen() || !IsTaken(GetLastError())) return;
            if (RemoveAbandoned(path_) || wait.Wait(kWaitForOther)) continue;
            SetLastError(ERROR_BUSY);
            return;
        }
    }
    ~FileBeside() {
        if (!file_.IsOpen()) return;
        file_.Close();
        DeleteFileW(path_.c_str());
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    // Asked at once, GetLastError tells why it is not; ERROR_BUSY: its name is taken.
    bool IsThere() const { return file_.IsOpen(); }

    // Writes all its bytes, down to the disk: they have to be there before the name is.
    bool Fill(const std::string& bytes) {
        return file_.IsOpen() && WriteAll(file_, bytes) && FlushFileBuffers(file_.Get()) != 0;
    }

    bool Replace(const std::wstring& path) {
        constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
        if (MoveFileExW(path_.c_str(), path.c_str(), kHow) == 0) return false;
        file_.Close();
        return true;
    }

private:
    static bool IsTaken(DWORD error) {
        return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS ||
               error == ERROR_SHARING_VIOLATION;
    }

    std::wstring path_;
    Handle file_;
};

// Replacing asks for the rights of the folder, so a file's own mark has to be looked at.
bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

enum class ExistingFile { None, Plain, HasOtherNames, Stream };

// What stands at a path, without a claim on it that others would see.
ExistingFile LookAt(const std::wstring& path) {
    constexpr DWORD kNoAccess = 0;
    const Handle file(CreateFileW(path.c_str(), kNoAccess, kShareWithAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) return ExistingFile::None;
    if (!IsDiskFile(file)) return ExistingFile::Stream;
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool hasOtherNames =
        GetFileInformationByHandle(file.Get(), &information) != 0 && information.nNumberOfLinks > 1;
    return hasOtherNames ? ExistingFile::HasOtherNames : ExistingFile::Plain;
}

Handle OpenToWrite(const std::wstring& path) {
    return Handle(CreateFileW(path.c_str(), GENERIC_WRITE, kShareWithAll, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

// The null device, the console, a pipe: they take bytes, and that is all.
bool WriteToStream(const std::wstring& path, const std::string& bytes) {
    const Handle stream = OpenToWrite(path);
    return stream.IsOpen() && WriteAll(stream, bytes);
}

bool CutBehind(const Handle& file, size_t size) {
    LARGE_INTEGER end = {};
    end.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(file.Get()) != 0;
}

// A file that a viewer holds cannot be replaced, nor one in a folder that takes no new file, and one of
// several names would become two; such a file is written as it stands. It is made as long as it has to be
// first: without room nothing is touched.
bool WriteInPlace(const std::wstring& path, const std::string& bytes) {
    const Handle file = OpenToWrite(path);
    if (!file.IsOpen() || !IsDiskFile(file)) return false;
    const std::optional<FileVersion> old = VersionOf(file);
    if (!old) return false;
    if (bytes.size() > old->size && !CutBehind(file, bytes.size())) {
        static_cast<void>(CutBehind(file, static_cast<size_t>(old->size)));
        return false;
    }
    if (SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN) != 0 && WriteAll(file, bytes) &&
        CutBehind(file, bytes.size()) && FlushFileBuffers(file.Get()) != 0)
        return true;
    static_cast<void>(CutBehind(file, 0));  // no half file that looks like a whole one
    return false;
}

// Only what still holds the bytes that were put there is this process's own.
void RememberAsOwn(const std::wstring& path, const std::string& bytes) {
    const Handle file = OpenToRead(path, kShareWithoutWriters);
    if (!file.IsOpen() || !HoldsBytes(file, bytes)) return;
    if (const std::optional<FileVersion> version = VersionOf(file)) Own().Add(*version);
}

}  // namespace

ReadResult ReadWholeFile(const std::wstring& path, size_t largestSize, WaitBudget& wait, std::string& bytes) {
    if (path.empty()) return ReadResult::Missing;
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return ReadResult::NoFile;
    for (;;) {
        const ReadVersion version = ReadOnce(path, largestSize, wait, bytes);
        if (version.result != ReadResult::Done || version.timeUntilWhole.count() == 0) return version.result;
        if (!wait.Wait(version.timeUntilWhole)) return ReadResult::Done;
    }
}

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    if (path.empty() || IsReadOnly(path)) return false;
    WaitBudget wait;
    const ExistingFile existing = LookAt(path);
    if (existing == ExistingFile::Stream) return WriteToStream(path, bytes);
    if (existing == ExistingFile::HasOtherNames) return WriteInPlace(path, bytes);
    {
        FileBeside beside(path, wait);
        if (beside.IsThere()) {
            if (!beside.Fill(bytes)) return false;
            if (beside.Replace(path)) return true;
        } else if (GetLastError() != ERROR_ACCESS_DENIED) {
            return false;
        }
    }
    return WriteInPlace(path, bytes);
}

bool ReplaceWholeFile(const std::wstring& path, const std::string& oldBytes, const std::string& newBytes,
                      WaitBudget& wait) {
    if (path.empty() || IsReadOnly(path)) return false;
    for (;;) {
        // Nobody can open the file for writing in between, so it stays what it is.
        Handle file = OpenWithoutWriters(path, wait);
        if (!file.IsOpen() || !IsDiskFile(file) || !HoldsBytes(file, oldBytes)) return false;
        const std::optional<FileVersion> version = VersionOf(file);
        if (!version) return false;
        const std::chrono::nanoseconds missing = TimeUntilWhole(*version);
        if (missing.count() > 0) {
            // Not held open that long: an editor would be refused.
            file.Close();
            if (!wait.Wait(missing)) return false;
            continue;
        }
        FileBeside beside(path, wait);
        if (!beside.Fill(newBytes)) return false;
        // A file that somebody opens from now on cannot be replaced, so that only a save which begins and
        // ends between these two calls would be lost.
        file.Close();
        if (!beside.Replace(path)) return false;
        break;
    }
    RememberAsOwn(path, newBytes);
    return true;
}

void RemoveLeftover(const std::wstring& path) {
    if (!path.empty()) static_cast<void>(RemoveAbandoned(PathBeside(path)));
}

}  // namespace vastrelline
