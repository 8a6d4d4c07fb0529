// SPDX-License-Identifier: Apache-2.0
#include "formats/TiffMemory.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

namespace vastrelline {
namespace {

constexpr size_t kMessageBytes = 200;

// What the library takes in one piece: of a file that is read its strips, and tables as long as the file
// tells them to be. Nothing of that is much larger than the file itself, but for what a decoder needs.
constexpr size_t kRoomForDecoders = size_t{64} << 20;

TiffMemory& Self(thandle_t self) { return *static_cast<TiffMemory*>(self); }

int CloseNothing(thandle_t /*self*/) { return 0; }
int MapNothing(thandle_t /*self*/, void** /*base*/, toff_t* /*size*/) { return 0; }
void UnmapNothing(thandle_t /*self*/, void* /*base*/, toff_t /*size*/) {}

}  // namespace

TiffMemory::TiffMemory(const std::vector<uint8_t>& bytes) : source_(&bytes) {
    Open("rm", bytes.size() + kRoomForDecoders);  // m: the bytes are copied, not mapped
}

TiffMemory::TiffMemory() { Open("wl", 0); }  // l: low byte first

TiffMemory::~TiffMemory() { Close(); }

void TiffMemory::Open(const char* mode, size_t largestPiece) {
    TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
    if (options == nullptr) throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, KeepError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options, DropWarning, this);
    if (largestPiece != 0) TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(largestPiece));
    file_ = TIFFClientOpenExt("frame", mode, this, Read, Write, Seek, CloseNothing, Size, MapNothing,
                              UnmapNothing, options);
    TIFFOpenOptionsFree(options);
}

void TiffMemory::Close() {
    if (file_ != nullptr) TIFFClose(file_);
    file_ = nullptr;
}

tmsize_t TiffMemory::Read(thandle_t self, void* target, tmsize_t count) {
    TiffMemory& memory = Self(self);
    const std::vector<uint8_t>& bytes = memory.source_ == nullptr ? memory.written_ : *memory.source_;
    if (count <= 0 || memory.position_ >= bytes.size()) return 0;
    const size_t start = static_cast<size_t>(memory.position_);
    const size_t taken = std::min(static_cast<size_t>(count), bytes.size() - start);
    std::memcpy(target, bytes.data() + start, taken);
    memory.position_ += taken;
    return static_cast<tmsize_t>(taken);
}

tmsize_t TiffMemory::Write(thandle_t self, void* source, tmsize_t count) {
    TiffMemory& memory = Self(self);
    if (memory.source_ != nullptr || count < 0) return -1;
    const size_t start = static_cast<size_t>(memory.position_);
    const size_t end = start + static_cast<size_t>(count);
    try {  // no exception may cross the library
        if (memory.written_.size() < end) memory.written_.resize(end);
    } catch (const std::exception&) {
        return -1;
    }
    std::memcpy(memory.written_.data() + start, source, static_cast<size_t>(count));
    memory.position_ = end;
    return count;
}

toff_t TiffMemory::Seek(thandle_t self, toff_t offset, int origin) {
    TiffMemory& memory = Self(self);
    const uint64_t base = origin == SEEK_SET   ? 0
                          : origin == SEEK_CUR ? memory.position_
                                               : uint64_t{memory.ByteCount()};
    memory.position_ = base + offset;  // past the end nothing is read, and what is written there makes room
    return memory.position_;
}

toff_t TiffMemory::Size(thandle_t self) { return Self(self).ByteCount(); }

int TiffMemory::KeepError(TIFF* /*file*/, void* self, const char* /*module*/, const char* format,
                          va_list values) {
    TiffMemory& memory = *static_cast<TiffMemory*>(self);
    std::array<char, kMessageBytes> text{};
    std::vsnprintf(text.data(), text.size(), format, values);
    try {
        memory.message_ = text.data();
    } catch (const std::exception&) {
        return 1;
    }
    return 1;  // nobody else is told
}

int TiffMemory::DropWarning(TIFF* /*file*/, void* /*self*/, const char* /*module*/, const char* /*format*/,
                            va_list /*values*/) {
    return 1;
}

}  // namespace vastrelline
