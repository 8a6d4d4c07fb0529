// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileFile.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "files/InputFile.h"
#include "profile_text/CaseFolding.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

constexpr uint64_t kLargestProfile = uint64_t{64} << 20U;

std::wstring Folded(std::wstring name) {
    for (wchar_t& character : name) character = FoldCase(character);
    return name;
}

std::wstring FoldedUtf8(std::string_view name) { return Folded(DecodeUtf8(name)); }

}  // namespace

ProfileFile ProfileFile::Read(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadInputFile(path, kLargestProfile);
    return {path, std::string(bytes.begin(), bytes.end())};
}

ProfileFile::ProfileFile(std::string path, std::string bytes)
    : path_(std::move(path)), text_(std::move(bytes)) {
    ReadLines();
}

void ProfileFile::ReadLines() {
    const size_t start = text_.Encoding().MarkSize();
    ProfileLineReader lines = text_.Lines({start, text_.Bytes().size()});
    while (const std::optional<ProfileLine> line = lines.Next()) {
        lineStarts_.push_back(line->whole.begin);
        if (line->kind == LineKind::Head) {
            ProfileFileSection section;
            const std::wstring name = text_.Decode(line->name);
            section.name = EncodeUtf8(name);
            section.lineNumber = lineStarts_.size();
            section.head = line->name;
            section.counts = !name.empty() && sectionByName_.emplace(Folded(name), sections_.size()).second;
            sections_.push_back(std::move(section));
            keysOfSection_.emplace_back();
        }
        if (line->kind != LineKind::Entry) continue;
        if (sections_.empty()) {
            sections_.emplace_back();
            keysOfSection_.emplace_back();
        }
        AddEntry(*line, keysOfSection_.back());
    }
}

void ProfileFile::AddEntry(const ProfileLine& line, Names& keys) {
    ProfileFileSection& section = sections_.back();
    const std::wstring name = text_.Decode(line.name);
    const auto [first, isFirst] = keys.emplace(Folded(name), section.entries.size());
    ProfileEntry entry;
    entry.line = line;
    entry.lineNumber = lineStarts_.size();
    entry.key = EncodeUtf8(name);
    entry.counts = isFirst && section.counts;
    entry.firstLineNumber = isFirst ? entry.lineNumber : section.entries[first->second].lineNumber;
    section.entries.push_back(std::move(entry));
}

const ProfileFileSection* ProfileFile::FindSection(std::string_view name) const {
    const auto found = sectionByName_.find(FoldedUtf8(name));
    return found == sectionByName_.end() ? nullptr : &sections_[found->second];
}

const ProfileEntry* ProfileFile::FindEntry(std::string_view section, std::string_view key) const {
    const auto found = sectionByName_.find(FoldedUtf8(section));
    if (found == sectionByName_.end()) return nullptr;
    const Names& keys = keysOfSection_[found->second];
    const auto entry = keys.find(FoldedUtf8(key));
    return entry == keys.end() ? nullptr : &sections_[found->second].entries[entry->second];
}

std::optional<std::wstring> ProfileFile::ValueOf(const ProfileEntry& entry) const {
    if (!entry.line.hasValue) return std::nullopt;
    std::wstring value = text_.Decode(entry.line.value);
    value.resize(std::min(value.size(), value.find(L'\0')));
    return value;
}

TextPlace ProfileFile::PlaceOf(size_t offset) const {
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    if (next == lineStarts_.begin()) return {};
    const size_t start = *std::prev(next);
    const std::wstring before = text_.Decode({start, std::min(offset, text_.Bytes().size())});
    return {static_cast<size_t>(next - lineStarts_.begin()), before.size() + 1};
}

std::vector<std::string> ProfileFile::SectionNames() const {
    std::vector<std::string> names;
    for (const ProfileFileSection& section : sections_)
        if (section.counts && !section.name.empty()) names.push_back(section.name);
    return names;
}

}  // namespace vastrelline
