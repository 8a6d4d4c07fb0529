// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tiffio.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vastrelline {

// A TIFF file in memory, opened by the TIFF library, which says nothing on standard error meanwhile. The last
// thing that it found wrong, mostly the cause of the end, stands in Message(): unknown tags come before it.
class TiffMemory {
public:
    // To read `bytes`, which must outlive the object. File() is null if they are no TIFF file.
    explicit TiffMemory(const std::vector<uint8_t>& bytes);

    // To write a new file, whose bytes are Written() after Close().
    TiffMemory();

    ~TiffMemory();
    TiffMemory(const TiffMemory&) = delete;
    TiffMemory& operator=(const TiffMemory&) = delete;
    TiffMemory(TiffMemory&&) = delete;
    TiffMemory& operator=(TiffMemory&&) = delete;

    TIFF* File() { return file_; }
    void Close();
    const std::string& Message() const { return message_; }
    size_t ByteCount() const { return source_ == nullptr ? written_.size() : source_->size(); }
    std::vector<uint8_t>& Written() { return written_; }

private:
    static tmsize_t Read(thandle_t self, void* target, tmsize_t count);
    static tmsize_t Write(thandle_t self, void* source, tmsize_t count);
    static toff_t Seek(thandle_t self, toff_t offset, int origin);
    static toff_t Size(thandle_t self);
    static int KeepError(TIFF* file, void* self, const char* module, const char* format, va_list values);
    static int DropWarning(TIFF* file, void* self, const char* module, const char* format, va_list values);

    void Open(const char* mode, size_t largestPiece);

    const std::vector<uint8_t>* source_ = nullptr;  // null: writing
    std::vector<uint8_t> written_;
    uint64_t position_ = 0;
    std::string message_;
    TIFF* file_ = nullptr;
};

}  // namespace vastrelline
