// SPDX-License-Identifier: Apache-2.0
#include "workbench/AgainstFiles.h"

#include <cstdint>
#include <limits>

#include "files/InputFile.h"
#include "library/ElfNote.h"
#include "library/VersionResource.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

std::vector<AgainstFile> ListAgainstFiles(std::span<const std::string> paths) {
    constexpr uint64_t kMostBytes = uint64_t{1} << 30;
    std::vector<AgainstFile> files;
    for (const std::string& path : paths) {
        const std::vector<uint8_t> bytes = ReadInputFile(path, kMostBytes);
        const bool isLibrary = IsElf(bytes) || IsPortableExecutable(bytes);
        // Said now and not when the page asks for it.
        if (!isLibrary) ProfileFile::Read(path);
        files.push_back({path, isLibrary});
    }
    return files;
}

}  // namespace vastrelline
