// SPDX-License-Identifier: Apache-2.0
#include "completion/ProfileCandidates.h"

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string_view>

#include "keys/KeyTable.h"
#include "messages/ToolError.h"
#include "platform/OwnProcess.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

// Nobody waits for more than that behind a key of the keyboard.
constexpr size_t kMostSections = 100;
constexpr int32_t kLowExposureMode = 3;

std::string ExpandHome(const std::string& path) {
    const std::optional<std::string> home = HomeFolder();
    return path.starts_with("~/") && home ? *home + path.substr(1) : path;
}

std::optional<ProfileFile> TryRead(const std::string& path) {
    if (path.empty()) return std::nullopt;
    try {
        return ProfileFile::Read(ExpandHome(path));
    } catch (const ToolError&) {
        return std::nullopt;  // whoever runs the command is told
    }
}

std::string FirstSentence(std::string_view text) {
    const size_t end = text.find(". ");
    std::string sentence(text.substr(0, end));
    while (sentence.ends_with('.')) sentence.pop_back();
    return sentence;
}

std::string DescribeKey(const ProfileFile& file, const PlannedKey& key) {
    const std::string meaning = FirstSentence(key.key->meaning);
    std::string value = "default " + std::string(key.key->defaultText);
    if (key.entry != nullptr)
        value = "now " + EncodeUtf8(file.ValueOf(*key.entry).value_or(std::wstring()));
    else if (key.key->defaultText.empty())
        value = "not set";
    return meaning.empty() ? value : value + ": " + meaning;
}

// The plans of all sections: what stands in IP_LOWMODE is read by a run of another one.
std::vector<SectionPlan> PlansOf(const ProfileFile& file) {
    std::vector<SectionPlan> plans;
    for (const std::string& name : file.SectionNames()) {
        if (plans.size() == kMostSections) break;
        const bool isLow = ReadIntegerKey(file, name, "PROCMODE", 0) == kLowExposureMode;
        plans.push_back(MakeSectionPlan(file, name, isLow ? ExportKind::S : ExportKind::Plain));
    }
    return plans;
}

}  // namespace

std::vector<Candidate> ListSections(const std::string& profilePath) {
    std::vector<Candidate> candidates;
    if (const std::optional<ProfileFile> file = TryRead(profilePath))
        for (const std::string& name : file->SectionNames()) candidates.push_back({name, {}});
    return candidates;
}

std::vector<Candidate> ListSectionKeys(const std::string& profilePath, const std::string& section) {
    const std::optional<ProfileFile> file = TryRead(profilePath);
    if (!file || section.empty()) return {};
    std::vector<Candidate> candidates;
    std::set<std::string> names;
    for (const SectionPlan& plan : PlansOf(*file))
        for (const PlannedPlace& place : plan.places) {
            if (!IsSameKeyName(place.section, section)) continue;
            for (const PlannedKey& key : place.keys)
                if (names.insert(key.name).second) candidates.push_back({key.name, DescribeKey(*file, key)});
        }
    return candidates;
}

std::vector<Candidate> ListKnownKeys() {
    std::vector<Candidate> candidates;
    std::set<std::string_view> names;
    const auto add = [&](std::span<const Key> keys) {
        for (const Key& key : keys)
            if (names.insert(key.name).second)
                candidates.push_back({std::string(key.name), FirstSentence(key.meaning)});
    };
    for (const Stage& stage : AllStageRows()) add(stage.keys);
    for (const SettingsGroup group : {SettingsGroup::Common, SettingsGroup::Fixed, SettingsGroup::Sensor})
        add(SettingsOf(group).keys);
    return candidates;
}

}  // namespace vastrelline
