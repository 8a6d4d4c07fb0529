// SPDX-License-Identifier: Apache-2.0
#include "files/FileKind.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "platform/PathText.h"

namespace vastrelline {
namespace {

using namespace std::string_view_literals;

struct KindRow {
    FileKind kind;
    std::string_view ending;
    std::string_view name;
};

// Of several endings of one kind the first is the usual one.
constexpr KindRow kKinds[] = {
    {FileKind::Raw, "raw", "raw frame"},      {FileKind::Pgm, "pgm", "PGM picture"},
    {FileKind::Png, "png", "PNG picture"},    {FileKind::Tiff, "tif", "TIFF picture"},
    {FileKind::Tiff, "tiff", "TIFF picture"}, {FileKind::Bmp, "bmp", "bitmap"},
};

// Bytes by which other files are known that somebody may take for a frame.
struct ForeignRow {
    size_t at;
    std::string_view bytes;
    std::string_view name;
};

constexpr ForeignRow kForeign[] = {
    {0, "\xFF\xD8\xFF"sv, "a JPEG picture"},
    {0, "\0\0\0\x0CjP  \r\n"sv, "a JPEG 2000 picture"},
    {0, "GIF8"sv, "a GIF picture"},
    {128, "DICM"sv, "a DICOM file"},
    {0, "%PDF-"sv, "a PDF document"},
    {0, "PK\x03\x04"sv, "a ZIP archive"},
    {0, "\x1F\x8B\x08"sv, "a file packed by gzip"},
};

bool HasAt(const std::vector<uint8_t>& bytes, size_t at, std::string_view wanted) {
    if (bytes.size() < at + wanted.size()) return false;
    return std::equal(wanted.begin(), wanted.end(), bytes.begin() + static_cast<ptrdiff_t>(at),
                      [](char c, uint8_t byte) { return static_cast<uint8_t>(c) == byte; });
}

// "P5", a blank, and a number or comment.
bool IsPgm(const std::vector<uint8_t>& bytes) {
    if (!HasAt(bytes, 0, "P5") || bytes.size() < 4) return false;
    const auto isBlank = [](uint8_t c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    size_t at = 2;
    while (at < bytes.size() && isBlank(bytes[at])) ++at;
    return at < bytes.size() && (bytes[at] == '#' || (at > 2 && bytes[at] >= '0' && bytes[at] <= '9'));
}

// "BM", two fields at 0, and the length of one of the heads that there are.
bool IsBmp(const std::vector<uint8_t>& bytes) {
    constexpr uint8_t kHeadLengths[] = {12, 40, 52, 56, 64, 108, 124};
    return HasAt(bytes, 0, "BM") && HasAt(bytes, 6, "\0\0\0\0"sv) && HasAt(bytes, 15, "\0\0\0"sv) &&
           std::find(std::begin(kHeadLengths), std::end(kHeadLengths), bytes[14]) != std::end(kHeadLengths);
}

bool IsTiff(const std::vector<uint8_t>& bytes) {
    return HasAt(bytes, 0, "II*\0"sv) || HasAt(bytes, 0, "MM\0*"sv) || HasAt(bytes, 0, "II+\0\x08\0\0\0"sv) ||
           HasAt(bytes, 0, "MM\0+\0\x08\0\0"sv);
}

// Letters, digits and ends of lines only, and enough of them to be no chance.
bool IsText(const std::vector<uint8_t>& bytes) {
    constexpr size_t kEnough = 16;
    constexpr size_t kLooked = 8192;  // more than the text heads that some programs put before levels
    return bytes.size() >= kEnough &&
           std::all_of(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(std::min(bytes.size(), kLooked)),
                       [](uint8_t byte) {
                           return (byte >= ' ' && byte < 0x7F) || byte == '\n' || byte == '\r' ||
                                  byte == '\t';
                       });
}

}  // namespace

FileKind FileKindOf(std::string_view path) {
    std::string ending = PathOf(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    for (const KindRow& row : kKinds)
        if (ending.size() == row.ending.size() + 1 && ending.ends_with(row.ending)) return row.kind;
    return FileKind::Other;
}

bool IsPictureKind(FileKind kind) { return kind != FileKind::Other; }

FileKind FileKindOfContent(const std::vector<uint8_t>& bytes) {
    if (HasAt(bytes, 0, "\x89PNG\r\n\x1A\n")) return FileKind::Png;
    if (IsTiff(bytes)) return FileKind::Tiff;
    if (IsPgm(bytes)) return FileKind::Pgm;
    if (IsBmp(bytes)) return FileKind::Bmp;
    return FileKind::Other;
}

std::string DescribeContent(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return "an empty file";
    if (const FileKind kind = FileKindOfContent(bytes); kind != FileKind::Other)
        return "a " + std::string(FileKindName(kind));
    for (const ForeignRow& row : kForeign)
        if (HasAt(bytes, row.at, row.bytes)) return std::string(row.name);
    // The other kinds of the family of PGM: letters where no levels would be.
    if (bytes.size() > 2 && bytes[0] == 'P' && bytes[1] >= '1' && bytes[1] <= '7' && bytes[2] == '\n')
        return "a picture of kind P" + std::string(1, static_cast<char>(bytes[1]));
    return IsText(bytes) ? "a text file" : std::string();
}

std::string_view FileKindName(FileKind kind) {
    for (const KindRow& row : kKinds)
        if (row.kind == kind) return row.name;
    return "file";
}

std::string_view FileKindEnding(FileKind kind) {
    for (const KindRow& row : kKinds)
        if (row.kind == kind) return row.ending;
    return {};
}

}  // namespace vastrelline
