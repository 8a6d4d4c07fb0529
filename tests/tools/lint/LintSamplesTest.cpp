// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lint/LintFixes.h"
#include "lint/LintRules.h"
#include "support/SourceTree.h"

namespace vastrelline {
namespace {

std::vector<std::filesystem::path> SamplePaths() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(SourceTreeFolder() / "profiles"))
        if (entry.path().extension() == ".ini") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::vector<ProfileFile> Samples() {
    std::vector<ProfileFile> samples;
    for (const std::filesystem::path& path : SamplePaths())
        samples.push_back(ProfileFile::Read(path.string()));
    return samples;
}

TEST(LintSamples, HaveNeitherWarningsNorErrors) {
    EXPECT_GE(Samples().size(), 2U);
    for (const ProfileFile& sample : Samples())
        for (const LintFinding& each : LintProfile(sample))
            EXPECT_EQ(each.finding.severity, Severity::Note) << FormatFinding(each.finding);
}

// ---- random edits
// ------------------------------------------------------------------------------------------

enum class EditKind : uint8_t { Misspell, Move, Double };

struct RandomEdit {
    std::string bytes;
    size_t line = 0;      // that the edit made wrong
    size_t inserted = 0;  // lines before which everything stays where it was; 0: none was put in
    std::string what;
    bool mayLeaveAGap = false;  // a stage number went elsewhere: its old position is without a stage
};

class Editor {
public:
    explicit Editor(uint32_t seed) : random_(seed) {}

    size_t Below(size_t count) { return random_() % count; }

    // Nothing: the edit would give a key that the section reads, or has already.
    std::optional<RandomEdit> Edit(const ProfileFile& file) {
        const std::vector<std::pair<size_t, size_t>> places = Entries(file);
        const auto [sectionIndex, entryIndex] = places[Below(places.size())];
        const ProfileFileSection& section = file.Sections()[sectionIndex];
        const ProfileEntry& entry = section.entries[entryIndex];
        const auto kind = static_cast<EditKind>(Below(3));
        if (kind == EditKind::Double) return Doubled(file, entry);
        const std::string name = kind == EditKind::Misspell ? Misspelt(entry.key) : Moved(entry.key);
        if (!IsNewAndUnread(file, section, name)) return std::nullopt;
        RandomEdit edit{file.Text().Bytes(), entry.lineNumber, 0, entry.key + " -> " + name, false};
        edit.bytes.replace(entry.line.name.begin, entry.line.name.Size(), name);
        edit.mayLeaveAGap = kind == EditKind::Move && entry.key.ends_with("_Function_Number");
        return edit;
    }

private:
    static std::vector<std::pair<size_t, size_t>> Entries(const ProfileFile& file) {
        std::vector<std::pair<size_t, size_t>> places;
        for (size_t i = 0; i < file.Sections().size(); ++i)
            for (size_t j = 0; j < file.Sections()[i].entries.size(); ++j) places.emplace_back(i, j);
        return places;
    }

    static bool IsNewAndUnread(const ProfileFile& file, const ProfileFileSection& section,
                               const std::string& name) {
        if (name.empty() || file.FindEntry(section.name, name) != nullptr) return false;
        // A plain name that the same section would read under another PROCMODE is told as a note or is no
        // slip.
        const std::vector<std::string> readable = MakeLintedSection(file, section).ReadableNames();
        return std::none_of(readable.begin(), readable.end(),
                            [&](const std::string& each) { return IsSameKeyName(each, name); });
    }

    std::optional<RandomEdit> Doubled(const ProfileFile& file, const ProfileEntry& entry) {
        const std::string& bytes = file.Text().Bytes();
        std::string line = bytes.substr(entry.line.whole.begin, entry.line.whole.Size());
        if (!line.ends_with('\n')) return std::nullopt;
        if (Below(2) == 0) line.insert(line.find('=') + 1, "1");
        RandomEdit edit{bytes, entry.lineNumber + 1, entry.lineNumber + 1, entry.key + " twice", false};
        edit.bytes.insert(entry.line.whole.end, line);
        return edit;
    }

    std::string Moved(const std::string& key) {
        const std::optional<NumberedName> name = SplitNumberedKey(key);
        return name ? NumberedKeyName(static_cast<int32_t>(Below(12)), name->key) : std::string();
    }

    // One letter or two are put in, taken out, replaced or swapped; the position stays.
    std::string Misspelt(const std::string& key) {
        const std::optional<NumberedName> name = SplitNumberedKey(key);
        const size_t start = name ? key.size() - name->key.size() : 0;
        std::string text = key;
        for (size_t slips = 1 + Below(2); slips > 0; --slips) {
            const size_t place = start + Below(text.size() - start);
            const auto letter = static_cast<char>('A' + Below(26));
            switch (Below(4)) {
                case 0:
                    text.insert(text.begin() + static_cast<ptrdiff_t>(place), letter);
                    break;
                case 1:
                    if (text.size() > start + 3) text.erase(place, 1);
                    break;
                case 2:
                    text[place] = letter;
                    break;
                default:
                    if (place + 1 < text.size()) std::swap(text[place], text[place + 1]);
                    break;
            }
        }
        return text;
    }

    std::mt19937 random_;
};

using Place = std::pair<size_t, std::string>;  // line and rule

std::set<Place> PlacesOf(const std::vector<LintFinding>& findings) {
    std::set<Place> places;
    for (const LintFinding& each : findings) places.emplace(each.finding.line, each.finding.rule);
    return places;
}

TEST(LintSamples, EveryRandomEditIsFoundAndNothingElse) {
    const std::vector<ProfileFile> samples = Samples();
    std::vector<std::set<Place>> before;
    for (const ProfileFile& sample : samples) before.push_back(PlacesOf(LintProfile(sample)));
    Editor editor(20261122);
    size_t edits = 0;
    for (int attempt = 0; attempt < 20000 && edits < 1000; ++attempt) {
        const size_t index = editor.Below(samples.size());
        const std::optional<RandomEdit> edit = editor.Edit(samples[index]);
        if (!edit) continue;
        ++edits;
        SCOPED_TRACE(samples[index].Path() + ":" + std::to_string(edit->line) + " " + edit->what);
        const std::vector<LintFinding> findings = LintProfile(ProfileFile("edited.ini", edit->bytes));
        bool isFound = false;
        for (const LintFinding& each : findings) {
            size_t line = each.finding.line;
            const bool isHere = line == edit->line;
            isFound = isFound || isHere;
            if (isHere) continue;
            if (edit->inserted > 0 && line > edit->inserted) --line;
            const bool isOld = before[index].contains({line, each.finding.rule});
            const bool isGap = edit->mayLeaveAGap && each.finding.rule == "list-gap";
            EXPECT_TRUE(isOld || isGap) << FormatFinding(each.finding);
        }
        EXPECT_TRUE(isFound);
    }
    EXPECT_EQ(edits, 1000U);
}

}  // namespace
}  // namespace vastrelline
