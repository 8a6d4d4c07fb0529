// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vastrelline {

// What a file of the library says of its build.
struct BuildNote {
    std::string version;
    std::string commit;    // "unknown", or with "-changed" behind it where the tree differed
    std::string compiler;  // and the processor that it is for
    std::string build;     // Release, Debug ...
    std::string flags;
    std::string forms;  // of its kernels

    bool operator==(const BuildNote&) const = default;
};

// The note of an ELF library or the version resource of a DLL, for whatever system and processor; nothing is
// loaded. Nothing where there is none, or not this library's.
std::optional<BuildNote> FindBuildNote(std::span<const uint8_t> file);

// Errors   InputError: no file that can be read, of more than 1 GiB, no library, without a note
BuildNote ReadBuildNote(const std::string& path);

}  // namespace vastrelline
