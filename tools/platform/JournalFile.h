// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace vastrelline {

// A file that only grows, and that one process at a time may hold. Others may read it all the while. Each
// function gives the reason of a failure, or none.
class JournalFile {
public:
    JournalFile() = default;
    ~JournalFile();  // what was appended is on the disk then
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    // Makes it if it is missing.
    std::error_code Open(const std::string& path);

    // Held until this object, or the process, ends. std::errc::resource_unavailable_try_again where another
    // object or process holds it.
    std::error_code Hold();

    // Bytes from a place on; fewer than asked for only at the end, count 0 behind it.
    std::error_code Read(uint64_t place, std::span<char> bytes, size_t& count) const;

    // At the end, in one piece where the system can.
    std::error_code Append(std::string_view bytes);

private:
    // A file descriptor or a handle, as wide as either; -1 is no file on both platforms.
    intptr_t handle_ = -1;
};

}  // namespace vastrelline
