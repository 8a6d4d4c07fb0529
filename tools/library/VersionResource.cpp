// SPDX-License-Identifier: Apache-2.0
#include "library/VersionResource.h"

#include <utility>

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

void AppendUtf8(std::string& text, uint32_t point) {
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += {static_cast<char>(0xC0U | point >> 6U), static_cast<char>(0x80U | (point & 0x3FU))};
    } else if (point < 0x10000) {
        text += {static_cast<char>(0xE0U | point >> 12U), static_cast<char>(0x80U | (point >> 6U & 0x3FU)),
                 static_cast<char>(0x80U | (point & 0x3FU))};
    } else {
        text +=
            {static_cast<char>(0xF0U | point >> 18U), static_cast<char>(0x80U | (point >> 12U & 0x3FU)),
             static_cast<char>(0x80U | (point >> 6U & 0x3FU)), static_cast<char>(0x80U | (point & 0x3FU))};
    }
}

// A text of 16-bit units up to a zero or the end. Units beyond the first plane stand in pairs; half a pair is
// shown as unknown.
std::string TakeUtf16(const ByteView& text, uint64_t& at) {
    constexpr uint32_t kUnknown = 0xFFFD;
    std::string result;
    uint32_t high = 0;
    while (const std::optional<uint64_t> unit = text.Number(at, 2)) {
        at += 2;
        const auto point = static_cast<uint32_t>(*unit);
        const bool isLow = point >= 0xDC00 && point < 0xE000;
        if (high != 0 && !isLow) AppendUtf8(result, kUnknown);
        if (point == 0) return result;
        if (isLow) {
            AppendUtf8(result, high == 0 ? kUnknown : 0x10000 + ((high - 0xD800) << 10U) + (point - 0xDC00));
            high = 0;
            continue;
        }
        high = point >= 0xD800 && point < 0xDC00 ? point : 0;
        if (high == 0) AppendUtf8(result, point);
    }
    if (high != 0) AppendUtf8(result, kUnknown);
    return result;
}

uint64_t ToWholeWord(uint64_t at) { return (at + 3) / 4 * 4; }

// A block of a version resource: its length, that of its value, a kind, a name, the value, further blocks.
struct Block {
    std::string name;
    bool hasValue;
    uint64_t value;  // where it begins
    uint64_t inner;  // where the further blocks begin
    uint64_t end;
};

// The block at a place; none where it is not whole before `end`. Its length has 16 bits.
std::optional<Block> ReadBlock(const ByteView& resource, uint64_t at, uint64_t end) {
    constexpr uint64_t kHeadBytes = 6;
    const std::optional<uint64_t> length = resource.Number(at, 2);
    const std::optional<uint64_t> valueLength = resource.Number(at + 2, 2);
    if (!length || !valueLength || *length < kHeadBytes || at > end || *length > end - at)
        return std::nullopt;
    const std::optional<ByteView> whole = resource.Piece(0, at + *length);
    if (!whole) return std::nullopt;
    uint64_t inside = at + kHeadBytes;
    std::string name = TakeUtf16(*whole, inside);
    inside = ToWholeWord(inside);
    return Block{std::move(name), *valueLength != 0, inside, ToWholeWord(inside + *valueLength),
                 at + *length};
}

// Calls visit(block) for the blocks within another one, up to the first that is not whole.
template <typename Visit>
void VisitInner(const ByteView& resource, const Block& outer, Visit&& visit) {
    uint64_t at = outer.inner;
    while (const std::optional<Block> block = ReadBlock(resource, at, outer.end)) {
        visit(*block);
        at = ToWholeWord(block->end);
    }
}

// Version, kinds of information, tables, strings. A resource is one block of at most 64 KiB, whatever lies
// behind it: so little is read of a file of any size.
Strings CollectStrings(const ByteView& resource) {
    Strings strings;
    const std::optional<Block> version = ReadBlock(resource, 0, resource.Size());
    if (!version || version->name != "VS_VERSION_INFO") return strings;
    const auto take = [&](const Block& string) {
        uint64_t at = string.value;
        const std::optional<ByteView> whole = resource.Piece(0, string.end);
        strings.emplace(string.name, string.hasValue && whole ? TakeUtf16(*whole, at) : std::string());
    };
    VisitInner(resource, *version, [&](const Block& kind) {
        if (kind.name != "StringFileInfo") return;
        VisitInner(resource, kind, [&](const Block& table) { VisitInner(resource, table, take); });
    });
    return strings;
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
    return CollectStrings(*data);
}

}  // namespace vastrelline
