// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vastrelline {

// Bytes of a made file, number by number.
class MadeBytes {
public:
    explicit MadeBytes(bool isHighFirst = false) : isHighFirst_(isHighFirst) {}

    void Put(size_t at, uint64_t number, size_t width) {
        if (bytes_.size() < at + width) bytes_.resize(at + width);
        for (size_t i = 0; i < width; ++i)
            bytes_[at + i] = static_cast<uint8_t>(number >> 8U * (isHighFirst_ ? width - 1 - i : i));
    }
    void Append(uint64_t number, size_t width) { Put(bytes_.size(), number, width); }
    void AppendText(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
    void FillUp(size_t step) { bytes_.resize((bytes_.size() + step - 1) / step * step); }
    size_t Size() const { return bytes_.size(); }
    const std::vector<uint8_t>& Bytes() const { return bytes_; }

private:
    bool isHighFirst_;
    std::vector<uint8_t> bytes_;
};

// An ELF file of two segments: something else, and one with two notes, the second of which is `owner`'s.
inline std::vector<uint8_t> MadeElf(bool isWide, bool isHighFirst, std::string_view owner,
                                    std::string_view text) {
    MadeBytes notes(isHighFirst);
    const auto note = [&notes](std::string_view name, std::string_view said) {
        notes.Append(name.size() + 1, 4);
        notes.Append(said.size() + 1, 4);
        notes.Append(1, 4);
        notes.AppendText(name);
        notes.Append(0, 1);
        notes.FillUp(4);
        notes.AppendText(said);
        notes.Append(0, 1);
        notes.FillUp(4);
    };
    note("GNU", "\x01\x02\x03");
    note(owner, text);

    const size_t address = isWide ? 8 : 4;
    const size_t head = isWide ? 64 : 52;
    const size_t row = isWide ? 56 : 32;
    MadeBytes file(isHighFirst);
    file.AppendText(std::string("\x7F") + "ELF");
    file.Append(isWide ? 2 : 1, 1);
    file.Append(isHighFirst ? 2 : 1, 1);
    file.Put(isWide ? 32 : 28, head, address);  // the table of segments
    file.Put(isWide ? 54 : 42, row, 2);
    file.Put(isWide ? 56 : 44, 2, 2);
    file.Put(head, 1, 4);  // a segment to load
    const size_t second = head + row;
    file.Put(second, 4, 4);
    file.Put(second + (isWide ? 8 : 4), head + 2 * row, address);
    file.Put(second + (isWide ? 32 : 16), notes.Size(), address);
    file.Put(second + (isWide ? 48 : 28), 4, address);
    for (const uint8_t byte : notes.Bytes()) file.Append(byte, 1);
    return file.Bytes();
}

// A block of a version resource: name, value in units of text, inner blocks.
inline MadeBytes VersionBlock(std::u16string_view name, std::u16string_view text,
                              const std::vector<MadeBytes>& inner) {
    MadeBytes block;
    block.Append(0, 2);
    block.Append(text.empty() ? 0 : text.size() + 1, 2);
    block.Append(1, 2);
    for (const char16_t unit : name) block.Append(unit, 2);
    block.Append(0, 2);
    block.FillUp(4);
    for (const char16_t unit : text) block.Append(unit, 2);
    if (!text.empty()) block.Append(0, 2);
    for (const MadeBytes& each : inner) {
        block.FillUp(4);
        for (const uint8_t byte : each.Bytes()) block.Append(byte, 1);
    }
    block.Put(0, block.Size(), 2);
    return block;
}

// A DLL of one section that holds that version resource.
inline std::vector<uint8_t> DllOf(bool isWide, const MadeBytes& version) {
    constexpr size_t kHeaders = 64;      // where they begin
    constexpr size_t kSection = 0x200;   // where the section begins in the file
    constexpr size_t kAddress = 0x3000;  // and in memory
    constexpr size_t kSubfolder = 0x80000000;
    MadeBytes resources;  // folders of types, names and languages, the entry, the data
    const auto folder = [&resources](size_t at, const std::vector<std::pair<size_t, size_t>>& entries) {
        resources.Put(at + 14, entries.size(), 2);
        for (size_t i = 0; i < entries.size(); ++i) {
            resources.Put(at + 16 + 8 * i, entries[i].first, 4);
            resources.Put(at + 20 + 8 * i, entries[i].second, 4);
        }
    };
    folder(0, {{3, kSubfolder + 32}, {16, kSubfolder + 32}});
    folder(32, {{1, kSubfolder + 56}});
    folder(56, {{1033, 80}});
    resources.Put(80, kAddress + 96, 4);
    resources.Put(84, version.Size(), 4);
    resources.FillUp(96);
    for (const uint8_t byte : version.Bytes()) resources.Append(byte, 1);

    const size_t optionalBytes = (isWide ? 112 : 96) + 8 * 16;
    const size_t optional = kHeaders + 24;
    MadeBytes file;
    file.AppendText("MZ");
    file.Put(0x3C, kHeaders, 4);
    file.Put(kHeaders, 0x4550, 4);
    file.Put(kHeaders + 6, 1, 2);
    file.Put(kHeaders + 20, optionalBytes, 2);
    file.Put(optional, isWide ? 0x20B : 0x10B, 2);
    const size_t table = optional + (isWide ? 112 : 96) + 16;
    file.Put(table, kAddress, 4);
    file.Put(table + 4, resources.Size(), 4);
    const size_t row = optional + optionalBytes;
    file.Put(row + 12, kAddress, 4);
    file.Put(row + 16, resources.Size(), 4);
    file.Put(row + 20, kSection, 4);
    file.Put(kSection - 1, 0, 1);
    for (const uint8_t byte : resources.Bytes()) file.Append(byte, 1);
    return file.Bytes();
}

// The same of these strings, with the blocks that each such resource has.
inline std::vector<uint8_t> MadeDll(bool isWide,
                                    const std::vector<std::pair<std::u16string, std::u16string>>& strings) {
    std::vector<MadeBytes> texts;
    for (const auto& [name, text] : strings) texts.push_back(VersionBlock(name, text, {}));
    return DllOf(
        isWide,
        VersionBlock(u"VS_VERSION_INFO", u"",
                     {VersionBlock(u"VarFileInfo", u"", {}),
                      VersionBlock(u"StringFileInfo", u"", {VersionBlock(u"040904B0", u"", texts)})}));
}

}  // namespace vastrelline
