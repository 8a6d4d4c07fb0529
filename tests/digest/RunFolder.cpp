// SPDX-License-Identifier: Apache-2.0
#include "RunFolder.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <ios>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "MaskedText.h"

namespace vastrelline::digest {

namespace {

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string Replace(std::string text, std::string_view what, std::string_view by) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

bool IsText(const std::filesystem::path& path) {
    return path.extension() == ".txt" || path.extension() == ".ini";
}

}  // namespace

RunFolder::RunFolder(const std::filesystem::path& base, std::string_view name, std::string_view profile)
    : path_(base / name), text_(path_.string()) {
    std::filesystem::create_directories(path_ / "out");
    const std::filesystem::path file = path_ / "p.ini";
    WriteFile(file, Replace(std::string(profile), "{folder}", text_));
    // For a profile that was saved a moment ago the library waits, in case that more is to come.
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
}

RunFolder::~RunFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string RunFolder::PathOf(std::string_view name) const { return (path_ / name).string(); }

std::vector<LeftFile> RunFolder::LeftFiles() const {
    std::vector<std::filesystem::path> paths;
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
        if (!entry.is_regular_file()) continue;
        paths.push_back(entry.path());
        names.push_back(entry.path().lexically_relative(path_).generic_string());
    }
    const std::vector<std::string> masked = MaskNames(names);
    std::vector<LeftFile> files;
    for (size_t i = 0; i < paths.size(); ++i) {
        std::string bytes = ReadFile(paths[i]);
        files.push_back({masked[i], IsText(paths[i]) ? MaskText(bytes, text_) : bytes});
    }
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return files;
}

}  // namespace vastrelline::digest
