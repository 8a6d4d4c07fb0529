// SPDX-License-Identifier: Apache-2.0
#include "platform/WholeFile.h"
#include "platform/memory/MemoryFiles.h"

namespace vastrelline {

// Nobody else writes these files, so all of them are quiet and nothing is ever waited for.

ReadResult ReadWholeFile(const std::wstring& path, size_t largestSize, WaitBudget& /*wait*/,
                         std::string& bytes) {
    MemoryFiles& files = MemoryFiles::Shared();
    const std::string* const file = files.Find(path);
    if (file == nullptr)
        return path.empty() || !files.HasFolder(path) ? ReadResult::Missing : ReadResult::NoFile;
    if (file->size() > largestSize) return ReadResult::NoFile;
    bytes = *file;
    return ReadResult::Done;
}

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    const bool hasName = !path.empty() && path.back() != L'/' && path.back() != L'\\';
    return hasName && MemoryFiles::Shared().Put(path, bytes) != nullptr;
}

bool ReplaceWholeFile(const std::wstring& path, const std::string& oldBytes, const std::string& newBytes,
                      WaitBudget& /*wait*/) {
    std::string* const file = MemoryFiles::Shared().Find(path);
    if (file == nullptr || *file != oldBytes) return false;
    *file = newBytes;
    return true;
}

void RemoveLeftover(const std::wstring& /*path*/) {}

}  // namespace vastrelline
