// SPDX-License-Identifier: Apache-2.0
#include "library/VersionResource.h"

#include <algorithm>

#include "library/ByteView.h"

namespace vastrelline {
namespace {

using Strings = std::map<std::string, std::string>;

constexpr uint64_t kHeaderPlace = 0x3C;
constexpr uint64_t kCoffBytes = 24;  // the mark and the header behind it
constexpr uint64_t kSectionBytes = 40;
constexpr uint64_t kVersionType = 16;
constexpr uint64_t kSubfolder = 0x80000000;

// Where the headers lie.
std::optional<uint64_t> FindCoff(const ByteView& file) {
    if (file.Number(0, 2) != 0x5A4DU) return std::nullopt;  // "MZ"
    const std::optional<uint64_t> at = file.Number(kHeaderPlace, 4);
    if (!at || file.Number(*at, 4) != 0x4550U) return std::nullopt;  // "PE"
    return at;
}

// The bytes that are loaded to an address.
std::optional<ByteView> AtAddress(const ByteView& file, uint64_t coff, uint64_t address, uint64_t length) {
    const std::optional<uint64_t> sections = file.Number(coff + 6, 2);
    const std::optional<uint64_t> optionalBytes = file.Number(coff + 20, 2);
    if (!sections || !optionalBytes) return std::nullopt;
    for (uint64_t i = 0; i < *sections; ++i) {
        const uint64_t row = coff + kCoffBytes + *optionalBytes + i * kSectionBytes;
        const std::optional<uint64_t> start = file.Number(row + 12, 4);
        const std::optional<uint64_t> stored = file.Number(row + 16, 4);
        const std::optional<uint64_t> place = file.Number(row + 20, 4);
        if (!start || !stored || !place) return std::nullopt;
        if (address < *start || address - *start > *stored) continue;
        return file.Piece(*place + (address - *start), length);
    }
    return std::nullopt;
}

// The value of the first entry of a folder of resources, or of the one of `type`.
std::optional<uint64_t> FindEntry(const ByteView& resources, uint64_t folder, std::optional<uint64_t> type) {
    const std::optional<uint64_t> named = resources.Number(folder + 12, 2);
    const std::optional<uint64_t> numbered = resources.Number(folder + 14, 2);
    if (!named || !numbered) return std::nullopt;
    for (uint64_t i = 0; i < *named + *numbered; ++i) {
        const uint64_t entry = folder + 16 + i * 8;
        const std::optional<uint64_t> number = resources.Number(entry, 4);
        if (!number) return std::nullopt;
        if (!type || number == type) return resources.Number(entry + 4, 4);
    }
    return std::nullopt;
}

// A text of 16-bit units up to a zero or the end. Units beyond the first plane stand in pairs.
std::string TakeUtf16(const ByteView& text, uint64_t& at) {
    std::string result;
    uint32_t high = 0;
    while (const std::optional<uint64_t> unit = text.Number(at, 2)) {
        at += 2;
        if (*unit == 0) break;
        auto point = static_cast<uint32_t>(*unit);
        if (point >= 0xD800 && point < 0xDC00) {
            high = point;
            continue;
        }
        if (point >= 0xDC00 && point < 0xE000)
            point = high == 0 ? 0xFFFD : 0x10000 + ((high - 0xD800) << 10U) + (point - 0xDC00);
        high = 0;
        if (point < 0x80) {
            result += static_cast<char>(point);
        } else if (point < 0x800) {
            result += {static_cast<char>(0xC0U | point >> 6U), static_cast<char>(0x80U | (point & 0x3FU))};
        } else if (point < 0x10000) {
            result +=
                {static_cast<char>(0xE0U | point >> 12U), static_cast<char>(0x80U | (point >> 6U & 0x3FU)),
                 static_cast<char>(0x80U | (point & 0x3FU))};
        } else {
            result += {
                static_cast<char>(0xF0U | point >> 18U), static_cast<char>(0x80U | (point >> 12U & 0x3FU)),
                static_cast<char>(0x80U | (point >> 6U & 0x3FU)), static_cast<char>(0x80U | (point & 0x3FU))};
        }
    }
    return result;
}

uint64_t ToWholeWord(uint64_t at) { return (at + 3) / 4 * 4; }

// A block holds a name, a value and further blocks; a string is one whose value is text. Collects the
// strings.
//
// depth   of blocks around this one: version, kinds of information, tables, strings
void CollectStrings(const ByteView& resource, uint64_t at, uint64_t end, int depth, Strings& strings) {
    constexpr int kStringDepth = 3;
    constexpr uint64_t kHeadBytes = 6;
    while (at + kHeadBytes <= end) {
        const std::optional<uint64_t> length = resource.Number(at, 2);
        const std::optional<uint64_t> valueLength = resource.Number(at + 2, 2);
        if (!length || !valueLength || *length < kHeadBytes || *length > end - at) return;
        const std::optional<ByteView> whole = resource.Piece(0, at + *length);
        if (!whole) return;
        uint64_t inside = at + kHeadBytes;
        const std::string name = TakeUtf16(*whole, inside);
        inside = ToWholeWord(inside);
        if (depth == kStringDepth) {
            strings.emplace(name, *valueLength == 0 ? std::string() : TakeUtf16(*whole, inside));
        } else {
            CollectStrings(resource, ToWholeWord(inside + *valueLength), at + *length, depth + 1, strings);
        }
        at = ToWholeWord(at + *length);
    }
}

}  // namespace

bool IsPortableExecutable(std::span<const uint8_t> file) { return FindCoff(ByteView(file)).has_value(); }

std::optional<Strings> FindVersionStrings(std::span<const uint8_t> file) {
    constexpr uint64_t kWideImage = 0x20B;
    const ByteView view(file);
    const std::optional<uint64_t> coff = FindCoff(view);
    if (!coff) return std::nullopt;
    const uint64_t optional = *coff + kCoffBytes;
    const uint64_t tables = optional + (view.Number(optional, 2) == kWideImage ? 112 : 96);
    const std::optional<uint64_t> address = view.Number(tables + 16, 4);
    const std::optional<uint64_t> bytes = view.Number(tables + 20, 4);
    if (!address || !bytes || *address == 0) return std::nullopt;
    const std::optional<ByteView> resources = AtAddress(view, *coff, *address, *bytes);
    if (!resources) return std::nullopt;
    // A folder of types, one of names, one of languages.
    std::optional<uint64_t> entry = FindEntry(*resources, 0, kVersionType);
    for (int level = 0; level < 2 && entry; ++level) {
        if ((*entry & kSubfolder) == 0) return std::nullopt;
        entry = FindEntry(*resources, *entry & ~kSubfolder, std::nullopt);
    }
    if (!entry || (*entry & kSubfolder) != 0) return std::nullopt;
    const std::optional<uint64_t> dataAddress = resources->Number(*entry, 4);
    const std::optional<uint64_t> dataBytes = resources->Number(*entry + 4, 4);
    if (!dataAddress || !dataBytes) return std::nullopt;
    const std::optional<ByteView> data = AtAddress(view, *coff, *dataAddress, *dataBytes);
    if (!data) return std::nullopt;
    Strings strings;
    CollectStrings(*data, 0, data->Size(), 0, strings);
    return strings;
}

}  // namespace vastrelline
