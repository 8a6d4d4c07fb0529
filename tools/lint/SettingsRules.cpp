// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "lint/Rules.h"
#include "platform/PathText.h"
#include "profile/ValueReading.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

constexpr int32_t kDecidingMode = 3;

std::string HeadText(const LintedSection& section) { return "[" + section.section->name + "]"; }

size_t HeadOf(const LintedSection& section) { return section.section->head.begin; }

std::string FolderOf(const LintedSection& section, std::string_view key) {
    const ProfileEntry* const entry = section.Find(key);
    if (entry == nullptr) return {};
    return FormatReadValue(ReadWritten(section.file->ValueOf(*entry), KeyType::Text, "").value);
}

size_t PlaceOf(const LintedSection& section, std::string_view key, std::string_view switchKey) {
    const ProfileEntry* const entry = section.Find(key);
    if (entry == nullptr) return section.Find(switchKey)->line.name.begin;
    return entry->HasValue() ? entry->line.value.begin : entry->line.name.begin;
}

bool IsSwitchedOn(const LintedSection& section, std::string_view switchKey) {
    return section.role == SectionRole::Host &&
           ReadIntegerKey(*section.file, section.section->name, switchKey, 0) != 0;
}

bool EndsWithSeparator(std::string_view folder) { return folder.ends_with('/') || folder.ends_with('\\'); }

// A folder of this machine; the library takes both separators. One that belongs to another system is left to
// it.
bool MayBeHere(std::string folder) {
    const bool isOfWindows = folder.size() > 1 && folder[1] == ':';
#ifdef _WIN32
    const bool isOfOther = folder.starts_with('/');
#else
    const bool isOfOther = isOfWindows || folder.starts_with("\\\\");
    std::replace(folder.begin(), folder.end(), '\\', '/');
#endif
    if (isOfOther) return true;
    static_cast<void>(isOfWindows);
    std::error_code error;
    return std::filesystem::is_directory(PathOf(folder), error);
}

// Without its last level, which the library makes.
std::string ParentOf(std::string folder) {
    while (EndsWithSeparator(folder)) folder.pop_back();
    const size_t separator = folder.find_last_of("/\\");
    if (separator == std::string::npos) return ".";
    return separator == 0 ? folder.substr(0, 1) : folder.substr(0, separator);
}

void TestFolder(const LintedSection& section, FindingSink& sink, std::string_view switchKey,
                std::string_view key, bool isLastLevelMade) {
    if (!IsSwitchedOn(section, switchKey)) return;
    const std::string folder = FolderOf(section, key);
    const size_t place = PlaceOf(section, key, switchKey);
    const std::string shownKey(key);
    if (folder.empty()) {
        sink.Add(place, std::string(switchKey) + " is on without a folder; give " + shownKey);
    } else if (!MayBeHere(isLastLevelMade ? ParentOf(folder) : folder)) {
        sink.Add(place, "the folder " + ShownText(folder) + " of " + shownKey +
                            (isLastLevelMade ? " cannot be made; make the folder above it first"
                                             : " does not exist; make it first"));
    }
}

}  // namespace

void FindMissingModes(const LintedSection& section, FindingSink& sink) {
    if (!section.isModeDoubtful || section.HasMisspelt("PROCMODE")) return;
    sink.Add(
        HeadOf(section),
        HeadText(section) + " has a stage list but no PROCMODE, so the fixed chain runs; add PROCMODE=2");
}

void FindMissingPartners(const LintedSection& section, FindingSink& sink) {
    if (section.role != SectionRole::Host || section.plan.procMode != kDecidingMode) return;
    if (section.file->FindSection(kLowSectionName) != nullptr) return;
    sink.Add(section.Find("PROCMODE")->line.name.begin,
             "PROCMODE=3 without section IP_LOWMODE: a weak frame runs on defaults; add [IP_LOWMODE]");
}

void FindUnusedLowSections(const LintedSection& section, FindingSink& sink) {
    if (section.role != SectionRole::Low) return;
    for (const ProfileFileSection& other : section.file->Sections()) {
        if (!other.counts) continue;
        if (ReadIntegerKey(*section.file, other.name, "PROCMODE", 0) == kDecidingMode) return;
        const bool hasMode = section.file->FindEntry(other.name, "PROCMODE") != nullptr;
        if (!hasMode && MakeLintedSection(*section.file, other).HasMisspelt("PROCMODE")) return;
    }
    sink.Add(HeadOf(section),
             "no section has PROCMODE=3, so nothing reads [IP_LOWMODE]; set it where weak frames come");
}

void FindEmptySections(const LintedSection& section, FindingSink& sink) {
    if (!section.section->entries.empty()) return;
    sink.Add(HeadOf(section),
             HeadText(section) + " holds no line, so a run takes defaults; fill it or take it away");
}

void FindMissingFolders(const LintedSection& section, FindingSink& sink) {
    TestFolder(section, sink, "SAVE_IMAGE", "WRITE_PATH", false);
    TestFolder(section, sink, "SAVE_BACKUP", "SAVE_BACKUPPATH", true);
}

void FindFoldersWithoutSeparator(const LintedSection& section, FindingSink& sink) {
    if (section.role != SectionRole::Host) return;
    const std::string folder = FolderOf(section, "WRITE_PATH");
    if (folder.empty() || EndsWithSeparator(folder)) return;
    const ProfileEntry& entry = *section.Find("WRITE_PATH");
    const std::string separator = folder.find('\\') == std::string::npos ? "/" : "\\";
    std::optional<LintFix> fix;
    const std::string written = EncodeUtf8(section.file->ValueOf(entry).value_or(L""));
    // What is no folder may be meant as the beginning of the dumps' names.
    const bool mayBePrefix = folder.back() == '_' || folder.back() == '-' || !MayBeHere(folder);
    if (written == folder && !mayBePrefix)  // without quotes and not cut
        fix = LintFix{{entry.line.value.end, entry.line.value.end},
                      section.file->Text().Encoding().Encode(DecodeUtf8(separator)),
                      "end it with " + separator};
    sink.Add(entry.line.value.begin,
             "names of dumps are joined to WRITE_PATH directly; end it with " + separator, std::move(fix));
}

void FindMessageBoxes(const LintedSection& section, FindingSink& sink) {
    const ProfileEntry* const entry = section.Find("MSGBOX_ENABLE");
    if (entry == nullptr || !entry->HasValue() || !IsSwitchedOn(section, "MSGBOX_ENABLE")) return;
    if (section.plan.chain == ChainKind::LowExposure)
        sink.Add(entry->line.value.begin,
                 "each run stops for a message box; set MSGBOX_ENABLE=0 when you are done");
    else if (section.RunsList())
        sink.Add(Severity::Note, entry->line.value.begin,
                 "message boxes come with PROCMODE 3 only; set it to 0");
}

}  // namespace vastrelline
