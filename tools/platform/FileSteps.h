// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace vastrelline {

// The single steps by which files and folders come into being and take their names. Each gives the reason of
// a failure, or none. Paths are UTF-8 on Windows and bytes elsewhere.

// Makes an empty file, with the rights that new files get. std::errc::file_exists where the name is taken.
std::error_code MakeNewFile(const std::string& path);

// Replaces the content of a file that is there.
std::error_code WriteContent(const std::string& path, std::span<const uint8_t> bytes);

// Returns when the disk has the content.
std::error_code FlushToDisk(const std::string& path);

// Renames a file or a folder, in one step. std::errc::file_exists where the name is taken,
// std::errc::not_supported where the file system cannot look and rename in one step.
std::error_code MoveToFreeName(const std::string& from, const std::string& to);

// Renames a file or a folder over the file that has the name, if one has it. The rights are then those of
// what was renamed; on Windows a file that may only be read is not replaced.
std::error_code MoveOver(const std::string& from, const std::string& to);

// Two folders take each other's names, in one step. std::errc::not_supported where that cannot be done.
std::error_code ExchangeNames(const std::string& one, const std::string& other);

// Makes a folder of a new name, for this user alone.
//
// head     what the name begins with
// path     the folder
std::error_code MakePrivateFolder(const std::string& parent, std::string_view head, std::string& path);

}  // namespace vastrelline
