#include "files/InputFile.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <stdexcept>
#include <system_error>

namespace vastrelline {

uint64_t InputFileSize(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw std::runtime_error("'" + path + "' does not exist");
    if (std::filesystem::is_directory(status))
        throw std::runtime_error("'" + path + "' is a folder, not a file");
    if (error) throw std::runtime_error("cannot read '" + path + "': " + error.message());
    if (!std::filesystem::is_regular_file(status))
        throw std::runtime_error("'" + path + "' is not a regular file");

    const uintmax_t size = std::filesystem::file_size(path, error);
    if (error) throw std::runtime_error("cannot read '" + path + "': " + error.message());
    return size;
}

std::vector<uint8_t> ReadInputFile(const std::string& path, uint64_t maxBytes) {
    const uint64_t size = InputFileSize(path);
    if (size > maxBytes)
        throw std::runtime_error("'" + path + "' is too large: " + std::to_string(size) + " bytes");

    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read '" + path + "': " + std::generic_category().message(errno));
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file.gcount() != static_cast<std::streamsize>(bytes.size()))
        throw std::runtime_error("cannot read '" + path + "' to its end");
    return bytes;
}

}  // namespace vastrelline
