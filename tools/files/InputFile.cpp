// SPDX-License-Identifier: Apache-2.0
#include "files/InputFile.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <system_error>

#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {

uint64_t InputFileSize(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(PathOf(path), error);
    if (status.type() == std::filesystem::file_type::not_found) throw InputError(path, "does not exist");
    if (std::filesystem::is_directory(status)) throw InputError(path, "is a folder, not a file");
    if (error) throw InputError(path, "cannot be read: " + DescribeReason(error));
    if (!std::filesystem::is_regular_file(status)) throw InputError(path, "is not a regular file");

    const uintmax_t size = std::filesystem::file_size(PathOf(path), error);
    if (error) throw InputError(path, "cannot be read: " + DescribeReason(error));
    return size;
}

std::vector<uint8_t> ReadInputFile(const std::string& path, uint64_t maxBytes) {
    const uint64_t size = InputFileSize(path);
    if (size > maxBytes) throw InputError(path, "is too large: " + std::to_string(size) + " bytes");

    errno = 0;
    std::ifstream file(PathOf(path), std::ios::binary);
    if (!file) throw InputError(path, "cannot be read: " + DescribeReason(LastReason()));
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file.gcount() != static_cast<std::streamsize>(bytes.size()))
        throw InputError(path, "cannot be read to its end");
    return bytes;
}

std::vector<uint8_t> ReadInputStream(std::istream& stream, const std::string& name, uint64_t maxBytes) {
    constexpr size_t kPiece = size_t{1} << 16;
    std::vector<uint8_t> bytes;
    while (stream) {
        const size_t start = bytes.size();
        bytes.resize(start + kPiece);
        stream.read(reinterpret_cast<char*>(bytes.data() + start), static_cast<std::streamsize>(kPiece));
        bytes.resize(start + static_cast<size_t>(stream.gcount()));
        if (bytes.size() > maxBytes)
            throw InputError(name, "is too large: more than " + std::to_string(maxBytes) + " bytes");
    }
    if (stream.bad()) throw InputError(name, "cannot be read to its end");
    return bytes;
}

}  // namespace vastrelline
