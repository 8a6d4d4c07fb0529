// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/PathPattern.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

bool IsPattern(std::wstring_view level) { return level.find_first_of(L"*?[") != std::wstring_view::npos; }

// By the system, for the run-time library's own locale knows the letters of ASCII only.
wchar_t Lower(wchar_t c) {
    CharLowerBuffW(&c, 1);
    return c;
}

// Names that differ in their cases alone are one here.
bool IsSame(wchar_t one, wchar_t other) { return Lower(one) == Lower(other); }

// "[a-c]", "[!a-c]": whether the set that begins the pattern has the character, and where it ends; npos: it
// is no set.
bool FitsSet(std::wstring_view pattern, wchar_t c, size_t& end) {
    const bool isOpposite = pattern.size() > 1 && pattern[1] == L'!';
    const size_t begin = isOpposite ? 2 : 1;
    end = pattern.find(L']', begin + 1);
    if (end == std::wstring_view::npos) return false;
    bool isIn = false;
    for (size_t i = begin; i < end; ++i) {
        if (i + 2 < end && pattern[i + 1] == L'-') {
            const wchar_t lower = Lower(c);
            isIn = isIn || (pattern[i] <= lower && lower <= pattern[i + 2]) ||
                   (pattern[i] <= c && c <= pattern[i + 2]);
            i += 2;
        } else {
            isIn = isIn || IsSame(pattern[i], c);
        }
    }
    return isIn != isOpposite;
}

// Whether the name's first character fits the pattern's first element, which is no star.
bool FitsOne(std::wstring_view pattern, wchar_t c, size_t& length) {
    length = 1;
    if (pattern.front() == L'?') return true;
    if (pattern.front() == L'[') {
        size_t end = 0;
        const bool isIn = FitsSet(pattern, c, end);
        if (end != std::wstring_view::npos) {
            length = end + 1;
            return isIn;
        }
    }
    return IsSame(pattern.front(), c);
}

// The last star alone is ever gone back to: what stood before it fits with the least that it can take.
bool Fits(std::wstring_view pattern, std::wstring_view name) {
    size_t p = 0;
    size_t n = 0;
    size_t star = std::wstring_view::npos;
    size_t taken = 0;
    while (n < name.size()) {
        size_t length = 0;
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && FitsOne(pattern.substr(p), name[n], length)) {
            p += length;
            ++n;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    return pattern.substr(p).find_first_not_of(L'*') == std::wstring_view::npos;
}

std::vector<fs::path> ExpandLevel(const fs::path& folder, const std::wstring& level) {
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entries(folder.empty() ? fs::path(L".") : folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        const std::wstring name = entries->path().filename().wstring();
        const bool isHidden = name.front() == L'.' && level.front() != L'.';
        if (!isHidden && Fits(level, name)) found.push_back(folder / name);
    }
    return found;
}

}  // namespace

std::vector<std::string> ExpandPattern(const std::string& pattern) {
    std::vector<fs::path> found{fs::path()};
    for (const fs::path& level : PathOf(pattern)) {
        std::vector<fs::path> deeper;
        for (const fs::path& folder : found) {
            if (IsPattern(level.wstring())) {
                for (fs::path& path : ExpandLevel(folder, level.wstring())) deeper.push_back(std::move(path));
            } else {
                deeper.push_back(folder / level);
            }
        }
        found = std::move(deeper);
    }
    std::vector<std::string> paths;
    std::error_code error;
    for (const fs::path& path : found)
        if (fs::exists(path, error)) paths.push_back(path.string());
    return paths;
}

}  // namespace vastrelline
