// SPDX-License-Identifier: Apache-2.0
#include "lint/ProfileSetting.h"

#include <algorithm>
#include <utility>

#include "lint/LintRules.h"
#include "messages/ToolError.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

bool IsUnread(const LintedSection& section, const ProfileEntry* entry) {
    return std::any_of(section.unread.begin(), section.unread.end(), [&](const UnreadLine& line) {
        // A key of a list that is not run, or of ImageProcessingCR, is read by somebody.
        return line.entry == entry && line.cause != UnreadCause::OtherChain &&
               line.cause != UnreadCause::BeyondCount && line.cause != UnreadCause::AtOddPosition;
    });
}

}  // namespace

ProfileSetting SetInProfile(const ProfileFile& file, const std::string& section,
                            std::span<const ProfileValue> values) {
    std::optional<std::string> bytes = SetProfileValues(file.Text(), DecodeUtf8(section), values);
    if (!bytes)
        throw UsageError("such a line could not be read back",
                         "a key or section has no line end, '=', ';' or bracket that would end or begin "
                         "something else, a value no line end");
    ProfileSetting setting;
    setting.bytes = *std::move(bytes);
    const ProfileFile edited(file.Path(), setting.bytes);
    const ProfileFileSection* const found = edited.FindSection(section);
    if (found == nullptr)
        throw UsageError("'" + section + "' is no name of a section", "take brackets out of it");
    const LintedSection linted = MakeLintedSection(edited, *found);
    for (const ProfileValue& value : values) {
        const std::string key = EncodeUtf8(value.key);
        const ProfileEntry* const before = file.FindEntry(section, key);
        const ProfileEntry* const after = edited.FindEntry(section, key);
        SetLine line{after == nullptr ? key : after->key, after == nullptr ? 0 : after->lineNumber,
                     std::nullopt, EncodeUtf8(value.value), false};
        if (before != nullptr) line.old = EncodeUtf8(file.ValueOf(*before).value_or(L""));
        line.isChanged = line.old != line.value;
        setting.areAllRead = setting.areAllRead && !IsUnread(linted, after);
        setting.lines.push_back(std::move(line));
    }
    for (LintFinding& finding : LintProfile(edited, section)) {
        const bool isConcerned =
            std::any_of(setting.lines.begin(), setting.lines.end(),
                        [&](const SetLine& line) { return line.line == finding.finding.line; });
        if (isConcerned) setting.findings.push_back(std::move(finding));
    }
    return setting;
}

}  // namespace vastrelline
