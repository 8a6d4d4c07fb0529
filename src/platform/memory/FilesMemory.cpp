// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <utility>

#include "platform/Files.h"
#include "platform/memory/MemoryFiles.h"

namespace vastrelline {

namespace {

constexpr intptr_t kNoFile = -1;

// The paths of open files by their handles.
std::map<intptr_t, std::wstring>& OpenPaths() {
    static std::map<intptr_t, std::wstring> paths;
    return paths;
}

// Null also where a path ends with a separator, which is no name of a file.
std::string* FindOrMake(const std::wstring& path) {
    if (path.empty() || path.back() == L'/' || path.back() == L'\\') return nullptr;
    MemoryFiles& files = MemoryFiles::Shared();
    std::string* const file = files.Find(path);
    return file != nullptr ? file : files.Put(path, "");
}

}  // namespace

bool FileExists(const std::wstring& path) {
    MemoryFiles& files = MemoryFiles::Shared();
    return !path.empty() && (files.Find(path) != nullptr || files.HasFolder(path));
}

OutputFile::OutputFile(const std::wstring& path, OpenMode mode) {
    static intptr_t nextHandle = 0;
    std::string* const file = FindOrMake(path);
    if (file == nullptr || !MemoryFiles::Shared().Lock(path)) return;
    if (mode == OpenMode::TruncateExclusive) file->clear();
    handle_ = nextHandle++;
    OpenPaths()[handle_] = path;
}

OutputFile::~OutputFile() { Close(); }

bool OutputFile::IsOpen() const { return handle_ != kNoFile; }

bool OutputFile::Append(const void* bytes, size_t count) {
    if (!IsOpen()) return false;
    MemoryFiles::Shared().Find(OpenPaths().at(handle_))->append(static_cast<const char*>(bytes), count);
    return true;
}

void OutputFile::Close() {
    if (!IsOpen()) return;
    const auto open = OpenPaths().find(std::exchange(handle_, kNoFile));
    MemoryFiles::Shared().Unlock(open->second);
    OpenPaths().erase(open);
}

bool CreateFolder(const std::wstring& path) { return MemoryFiles::Shared().MakeFolder(path); }

}  // namespace vastrelline
