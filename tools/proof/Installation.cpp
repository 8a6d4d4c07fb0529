// SPDX-License-Identifier: Apache-2.0
#include "proof/Installation.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "files/InputFile.h"
#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMaxListBytes = uint64_t{16} << 20;
constexpr size_t kHashDigits = 64;

std::string FromTool(const std::string& program, const char* relative) {
    return (PathOf(program).parent_path() / PathOf(relative)).lexically_normal().string();
}

FileState LookAtFile(const std::string& path, const std::string& hash) {
    std::error_code error;
    if (!fs::exists(PathOf(path), error)) return FileState::Missing;
    try {
        return Sha256OfFile(path) == hash ? FileState::AsInstalled : FileState::Changed;
    } catch (const InputError&) {
        return FileState::Unreadable;
    }
}

}  // namespace

Installation FindInstallation(const std::string& program) {
    const fs::path data = PathOf(FromTool(program, VASTRELLINE_DATA_FROM_TOOL));
    return {FromTool(program, VASTRELLINE_PREFIX_FROM_TOOL), (data / "installed-files.txt").string(),
            (data / "proof" / "manifest.json").string(), FromTool(program, VASTRELLINE_FORMS_FROM_TOOL),
            fs::exists(data / "build-tree.txt")};
}

const char* FileStateName(FileState state) {
    switch (state) {
        case FileState::AsInstalled:
            return "as installed";
        case FileState::Changed:
            return "changed";
        case FileState::Missing:
            return "missing";
        case FileState::Unreadable:
            break;
    }
    return "cannot be read";
}

std::vector<CheckedFile> CheckInstalledFiles(const Installation& installation) {
    const std::vector<uint8_t> bytes = ReadInputFile(installation.list, kMaxListBytes);
    std::istringstream lines(std::string(bytes.begin(), bytes.end()));
    std::vector<CheckedFile> files;
    for (std::string line; std::getline(lines, line);) {
        // Hash, two blanks, path: as sha256sum has it.
        if (line.size() < kHashDigits + 3 || line.compare(kHashDigits, 2, "  ") != 0)
            throw InputError(installation.list,
                             "line " + std::to_string(files.size() + 1) + " is no hash with a path",
                             "install again");
        const std::string path = line.substr(kHashDigits + 2);
        files.push_back({path, LookAtFile((PathOf(installation.prefix) / PathOf(path)).string(),
                                          line.substr(0, kHashDigits))});
    }
    if (files.empty()) throw InputError(installation.list, "names no file", "install again");
    return files;
}

bool IsOfInstallation(const Installation& installation, const std::vector<CheckedFile>& files,
                      const std::string& path) {
    return std::any_of(files.begin(), files.end(), [&](const CheckedFile& file) {
        std::error_code error;
        return fs::equivalent(PathOf(installation.prefix) / PathOf(file.path), PathOf(path), error) && !error;
    });
}

}  // namespace vastrelline
