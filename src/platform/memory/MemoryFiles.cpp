// SPDX-License-Identifier: Apache-2.0
#include "platform/memory/MemoryFiles.h"

#include <string_view>

namespace vastrelline {

namespace {

constexpr wchar_t kSeparator = L'/';

// Levels with one separator between, none before and behind; empty for the root.
std::wstring PlainPath(std::wstring_view path) {
    std::wstring plain;
    while (!path.empty()) {
        const size_t end = path.find_first_of(L"/\\");
        const std::wstring_view level = path.substr(0, end);
        path.remove_prefix(end == std::wstring_view::npos ? path.size() : end + 1);
        if (level.empty() || level == L".") continue;
        if (!plain.empty()) plain += kSeparator;
        plain += level;
    }
    return plain;
}

std::wstring FolderOf(const std::wstring& plainPath) {
    const size_t separator = plainPath.rfind(kSeparator);
    return separator == std::wstring::npos ? std::wstring() : plainPath.substr(0, separator);
}

}  // namespace

MemoryFiles& MemoryFiles::Shared() {
    static MemoryFiles files;
    return files;
}

void MemoryFiles::Clear() { *this = {}; }

bool MemoryFiles::HasFolder(const std::wstring& path) const {
    const std::wstring plain = PlainPath(path);
    return plain.empty() || folders_.contains(plain);
}

std::string* MemoryFiles::Find(const std::wstring& path) {
    const auto file = files_.find(PlainPath(path));
    return file == files_.end() ? nullptr : &file->second;
}

std::string* MemoryFiles::Put(const std::wstring& path, const std::string& bytes) {
    const std::wstring plain = PlainPath(path);
    if (HasFolder(plain) || !HasFolder(FolderOf(plain))) return nullptr;
    std::string& file = files_[plain];
    file = bytes;
    return &file;
}

bool MemoryFiles::MakeFolder(const std::wstring& path) {
    const std::wstring plain = PlainPath(path);
    if (HasFolder(plain) || files_.contains(plain) || !HasFolder(FolderOf(plain))) return false;
    folders_.insert(plain);
    return true;
}

bool MemoryFiles::Lock(const std::wstring& path) { return locked_.insert(PlainPath(path)).second; }

void MemoryFiles::Unlock(const std::wstring& path) { locked_.erase(PlainPath(path)); }

}  // namespace vastrelline
