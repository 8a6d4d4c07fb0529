// SPDX-License-Identifier: Apache-2.0
#include "library/ElfNote.h"

#include <algorithm>
#include <array>

#include "library/ByteView.h"

namespace vastrelline {
namespace {

// Where the fields lie in files of one width.
struct ElfLayout {
    size_t addressBytes;
    uint64_t tablePlace;    // of the place of the table of segments
    uint64_t rowSizePlace;  // of the size of its rows, and behind it their number
    uint64_t offsetPlace;   // in a row: where the segment lies in the file
    uint64_t sizePlace;     // its size there
    uint64_t alignPlace;    // its alignment
};

constexpr ElfLayout kNarrow = {4, 28, 42, 4, 16, 28};
constexpr ElfLayout kWide = {8, 32, 54, 8, 32, 48};
constexpr uint64_t kNoteSegment = 4;

uint64_t RoundUp(uint64_t size, uint64_t step) { return (size + step - 1) / step * step; }

// A library has a handful of notes; segments without number over the same bytes would take hours.
constexpr int kMostNotes = 10000;

// Walks the notes of one segment.
//
// left   how many may still be looked at
std::optional<std::string> FindInSegment(const ByteView& notes, uint64_t step, std::string_view owner,
                                         int& left) {
    constexpr uint64_t kHeadBytes = 12;
    uint64_t at = 0;
    while (at < notes.Size() && left-- > 0) {
        const std::optional<uint64_t> ownerBytes = notes.Number(at, 4);
        const std::optional<uint64_t> textBytes = notes.Number(at + 4, 4);
        if (!ownerBytes || !textBytes) return std::nullopt;
        const uint64_t ownerAt = at + kHeadBytes;
        const uint64_t textAt = RoundUp(ownerAt + *ownerBytes, step);
        const std::optional<ByteView> name = notes.Piece(ownerAt, *ownerBytes);
        const std::optional<ByteView> text = notes.Piece(textAt, *textBytes);
        if (!name || !text) return std::nullopt;
        if (name->Size() == owner.size() + 1 && name->Text() == std::string(owner) + '\0') {
            std::string found = text->Text();
            found.resize(std::min(found.find('\0'), found.size()));
            return found;
        }
        at = RoundUp(textAt + *textBytes, step);
    }
    return std::nullopt;
}

}  // namespace

bool IsElf(std::span<const uint8_t> file) {
    constexpr std::array<uint8_t, 4> kMark = {0x7F, 'E', 'L', 'F'};
    return file.size() >= kMark.size() && std::equal(kMark.begin(), kMark.end(), file.begin());
}

std::optional<std::string> FindElfNote(std::span<const uint8_t> file, std::string_view owner) {
    constexpr size_t kWidthPlace = 4;
    constexpr size_t kOrderPlace = 5;
    if (!IsElf(file) || file.size() <= kOrderPlace) return std::nullopt;
    const ElfLayout& layout = file[kWidthPlace] == 2 ? kWide : kNarrow;
    const ByteView view(file, file[kOrderPlace] == 2 ? ByteOrder::HighFirst : ByteOrder::LowFirst);
    const std::optional<uint64_t> table = view.Number(layout.tablePlace, layout.addressBytes);
    const std::optional<uint64_t> rowSize = view.Number(layout.rowSizePlace, 2);
    const std::optional<uint64_t> rows = view.Number(layout.rowSizePlace + 2, 2);
    if (!table || !rowSize || !rows) return std::nullopt;
    int left = kMostNotes;
    for (uint64_t row = 0; row < *rows && left > 0; ++row) {
        if (*table > file.size()) return std::nullopt;
        const std::optional<ByteView> segment = view.Piece(*table + row * *rowSize, *rowSize);
        if (!segment) return std::nullopt;
        if (segment->Number(0, 4) != kNoteSegment) continue;
        const std::optional<uint64_t> offset = segment->Number(layout.offsetPlace, layout.addressBytes);
        const std::optional<uint64_t> size = segment->Number(layout.sizePlace, layout.addressBytes);
        const std::optional<uint64_t> align = segment->Number(layout.alignPlace, layout.addressBytes);
        if (!offset || !size) continue;
        const std::optional<ByteView> notes = view.Piece(*offset, *size);
        if (!notes) continue;
        if (std::optional<std::string> text = FindInSegment(*notes, align == 8U ? 8 : 4, owner, left))
            return text;
    }
    return std::nullopt;
}

}  // namespace vastrelline
