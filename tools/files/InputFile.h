// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace vastrelline {

// The size of a regular file in bytes.
//
// Errors   InputError: the file is missing, a folder, a device
uint64_t InputFileSize(const std::string& path);

// All bytes of a regular file. The file's size is looked at before any memory is taken.
//
// maxBytes   a larger file is refused
// Errors     as above; also: unreadable, too large, shrunk while it was read
std::vector<uint8_t> ReadInputFile(const std::string& path, uint64_t maxBytes);

// All bytes up to the end of a stream.
//
// name       of the stream, for the errors
// maxBytes   a longer stream is refused
// Errors     InputError
std::vector<uint8_t> ReadInputStream(std::istream& stream, const std::string& name, uint64_t maxBytes);

}  // namespace vastrelline
