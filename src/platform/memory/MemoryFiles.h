// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>

namespace vastrelline {

// Files and folders that exist in this process only: what the in-memory form of the platform folder has in
// place of the operating system's. That form is no part of the library; fuzz targets are linked with it, to
// whom making and flushing real files would cost nearly all their time.
//
// Paths     '\' and '/' separate folders; empty levels and "." stand for nothing. The root and the current
//           folder, which are one, are always there
// Threads   one at a time
class MemoryFiles {
public:
    // Those that the platform's functions work on.
    static MemoryFiles& Shared();

    // Takes everything away. Nothing may be open.
    void Clear();

    bool HasFolder(const std::wstring& path) const;

    // The bytes of a file; null if there is none. They may be changed as long as the file stays.
    std::string* Find(const std::wstring& path);

    // Makes a file, or gives one other bytes. Null: there is no such folder, or a folder has the name.
    std::string* Put(const std::wstring& path, const std::string& bytes);

    // Makes the last level. False: it is there already, also as a file, or the level above is not.
    bool MakeFolder(const std::wstring& path);

    // Opens for one writer at a time: false if another one has it open.
    bool Lock(const std::wstring& path);
    void Unlock(const std::wstring& path);

private:
    std::map<std::wstring, std::string> files_;  // all by their paths in the one form of them
    std::set<std::wstring> folders_;
    std::set<std::wstring> locked_;
};

}  // namespace vastrelline
