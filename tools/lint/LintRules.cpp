// SPDX-License-Identifier: Apache-2.0
#include "lint/LintRules.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "lint/Rules.h"
#include "profile/MissingSection.h"

namespace vastrelline {
namespace {

constexpr Severity kNote = Severity::Note;
constexpr Severity kWarning = Severity::Warning;
constexpr Severity kError = Severity::Error;

constexpr LintRule kRules[] = {
    {"no-section", kError, "The profile is empty or has no section.",
     "The library takes it without a word, and every run takes defaults.", false, FindMissingSections,
     nullptr},
    {"encoding", kWarning, "Bytes that are no text of one encoding: UTF-8, or UTF-16 behind its mark.",
     "Windows and Linux read such bytes in different ways; store the profile as UTF-8.", false,
     FindOddEncoding, nullptr},
    {"before-head", kWarning, "A line before the first section.", "No run reads it; move it into a section.",
     false, FindLinesBeforeHeads, nullptr},
    {"duplicate-section", kWarning, "A section whose name stands in the file before.",
     "The first one counts, and nothing of the second is read.", false, FindRepeatedSections, nullptr},
    {"unnameable-section", kWarning, "A section that no host can name.", "Give it a name.", false,
     FindUnnameableSections, nullptr},
    {"empty-section", kWarning, "A section without a line.", "A run of it takes defaults.", false, nullptr,
     FindEmptySections},
    {"no-key", kWarning, "A line without a key or without an equals sign.",
     "Nothing is read of it; comments begin with a semicolon.", false, nullptr, FindLinesWithoutKey},
    {"unknown-key", kWarning, "A key that nothing reads under this name.",
     "The default counts instead; mostly a slip of the hand. Names that look misspelt and stand in the key "
     "table "
     "are right.",
     true, nullptr, FindUnknownKeys},
    {"other-stage", kWarning, "A key of a stage that stands at another position.",
     "The stage at this position does not read it.", false, nullptr, FindKeysOfOtherStages},
    {"other-position", kWarning, "A stage's key at a position that the list does not have, or without one.",
     "Nothing reads it; in the list each key carries its stage's position.", false, nullptr,
     FindKeysOfOtherPositions},
    {"other-chain", kWarning, "A key of a chain that the section's PROCMODE does not run.",
     "A note where a switch of the fixed chain stands there, too: ImageProcessingCR runs whatever PROCMODE "
     "says.",
     false, nullptr, FindKeysOfOtherChains},
    {"other-section", kWarning, "A key that is read in another section.", "Move it there.", false, nullptr,
     FindKeysOfOtherSections},
    {"duplicate-key", kWarning, "A key that stands in its section before.", "The first line counts.", true,
     nullptr, FindRepeatedKeys},
    {"no-effect", kNote, "A key that is read and changes nothing.", "It may go.", false, nullptr,
     FindKeysWithoutEffect},
    {"decimal-comma", kWarning, "A number with a decimal comma.",
     "It is read up to the comma; the decimal sign is a point.", true, nullptr, FindDecimalCommas},
    {"text-as-number", kWarning, "Text, or nothing, where a number is read.",
     "What does not begin with a number is read as 0, and text behind one is dropped.", false, nullptr,
     FindTextInNumbers},
    {"cut-fraction", kWarning, "A fraction where an integer is read.", "It is cut off.", false, nullptr,
     FindFractionsInIntegers},
    {"number-range", kWarning, "A number too large or too small for its type.", "It is read as another one.",
     false, nullptr, FindNumbersOutOfReach},
    {"cut-value", kWarning, "A value of more than 260 characters.", "The rest is not read.", false, nullptr,
     FindCutValues},
    {"even-window", kWarning, "An even size where a window needs an odd one.",
     "The library takes another size, or the window has no middle.", false, nullptr, FindEvenWindows},
    {"value-range", kWarning, "A value outside of the sensible range.",
     "Every value is survived, but only these make pictures.", false, nullptr, FindSenselessValues},
    {"unknown-stage", kWarning, "A number in the stage list that no stage has.",
     "The position is passed over.", false, nullptr, FindUnknownStages},
    {"passed-over", kNote, "A stage that only some functions run.",
     "HDR with PROCMODE 2 runs from ImageProcessing_NE; elsewhere it is passed over.", false, nullptr,
     FindStagesPassedOver},
    {"function-count", kWarning, "FunctionCount smaller or larger than the list, or missing.",
     "Positions from it on are not run.", true, nullptr, FindListEnds},
    {"list-gap", kWarning, "A position of the list without a stage.", "It is passed over, its keys with it.",
     false, nullptr, FindListGaps},
    {"empty-list", kWarning, "PROCMODE 2 or 3 without a stage in the list.",
     "Only inversion and corners are left of the run.", false, nullptr, FindEmptyLists},
    {"unused-list", kWarning, "A stage list in a section whose PROCMODE runs the fixed chain.",
     "Nothing reads the list.", false, nullptr, FindUnusedLists},
    {"missing-procmode", kWarning, "A stage list in a section without PROCMODE.",
     "The fixed chain runs instead.", false, nullptr, FindMissingModes},
    {"missing-low-section", kWarning, "PROCMODE 3 without a section IP_LOWMODE.",
     "A weak frame runs the low sequence on its defaults.", false, nullptr, FindMissingPartners},
    {"unused-low-section", kNote, "A section IP_LOWMODE without a section of PROCMODE 3.",
     "Nothing reads it.", false, nullptr, FindUnusedLowSections},
    {"missing-folder", kWarning, "Dumps or backups that are on, without a folder that exists.",
     "They are not written, and nothing tells so.", false, nullptr, FindMissingFolders},
    {"folder-separator", kWarning, "WRITE_PATH without a separator at its end.",
     "File names are joined to it directly: dumps land beside the folder, under its name.", true, nullptr,
     FindFoldersWithoutSeparator},
    {"message-boxes", kWarning, "Message boxes are on.", "Each run waits until somebody answers.", false,
     nullptr, FindMessageBoxes},
};

void FindIn(const ProfileFile& file, const ProfileFileSection& section, std::vector<LintFinding>& findings) {
    const LintedSection linted = MakeLintedSection(file, section);
    for (const LintRule& rule : kRules) {
        if (rule.findInSection == nullptr) continue;
        FindingSink sink(file, rule.id, rule.severity, findings);
        rule.findInSection(linted, sink);
    }
}

// Of what was found in the whole file: what concerns one section, its twins included.
void KeepFindingsOf(const ProfileFile& file, std::string_view section, std::vector<LintFinding>& findings) {
    const ProfileFileSection* const wanted = file.FindSection(section);
    std::vector<std::pair<size_t, size_t>> lines;  // from head to head
    for (size_t i = 0; i < file.Sections().size(); ++i) {
        const ProfileFileSection& each = file.Sections()[i];
        if (each.name.empty() || file.FindSection(each.name) != wanted) continue;
        const bool isLast = i + 1 == file.Sections().size();
        lines.emplace_back(each.lineNumber, isLast ? SIZE_MAX : file.Sections()[i + 1].lineNumber);
    }
    std::erase_if(findings, [&](const LintFinding& each) {
        const size_t line = each.finding.line;
        return line > 0 && std::none_of(lines.begin(), lines.end(), [&](const auto& range) {
                   return line >= range.first && line < range.second;
               });
    });
}

}  // namespace

std::span<const LintRule> LintRules() { return kRules; }

std::vector<LintFinding> LintProfile(const ProfileFile& file, std::string_view section) {
    if (!section.empty() && file.FindSection(section) == nullptr) throw MissingSection(file, section);
    std::vector<LintFinding> findings;
    for (const LintRule& rule : kRules) {
        if (rule.findInFile == nullptr) continue;
        FindingSink sink(file, rule.id, rule.severity, findings);
        rule.findInFile(file, sink);
    }
    // What is no text at all has no lines to be talked about.
    const auto unreadable = std::find_if(findings.begin(), findings.end(), [](const LintFinding& each) {
        return each.finding.rule == "encoding" && each.finding.severity == kError;
    });
    if (unreadable != findings.end()) return {*unreadable};
    if (!section.empty()) KeepFindingsOf(file, section, findings);
    for (const ProfileFileSection& each : file.Sections()) {
        if (!each.counts) continue;
        if (section.empty() || file.FindSection(section) == &each) FindIn(file, each, findings);
    }
    std::stable_sort(findings.begin(), findings.end(), [](const LintFinding& one, const LintFinding& other) {
        return std::pair(one.finding.line, one.finding.column) <
               std::pair(other.finding.line, other.finding.column);
    });
    return findings;
}

}  // namespace vastrelline
