// SPDX-License-Identifier: Apache-2.0
#include "runs/LookAtProfile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "messages/Suggestion.h"
#include "platform/PathText.h"
#include "profile_text/Utf8.h"
#include "profile_text/ValueText.h"

namespace vastrelline {
namespace {

constexpr int32_t kListedMode = 2;
constexpr int32_t kDecidingMode = 3;

// Collects what is to be said about one section.
class ProfileLook {
public:
    ProfileLook(const ProfileFile& file, const SectionPlan& plan) : file_(file), plan_(plan) {}

    // key   whose line it is about; where it is missing, the section's head
    void Warn(std::string_view key, std::string text, std::string rule) {
        const ProfileEntry* const entry = file_.FindEntry(plan_.section, key);
        const ProfileFileSection* const section = file_.FindSection(plan_.section);
        const size_t head = section != nullptr ? section->lineNumber : 0;
        findings_.push_back({Severity::Warning, file_.Path(), entry != nullptr ? entry->lineNumber : head, 1,
                             std::move(text), std::move(rule)});
    }

    int32_t Number(std::string_view key, int32_t defaultValue) const {
        return ReadIntegerKey(file_, plan_.section, key, defaultValue);
    }

    std::string Text(std::string_view key) const {
        const ProfileEntry* const entry = file_.FindEntry(plan_.section, key);
        const std::optional<std::wstring> value =
            entry != nullptr ? file_.ValueOf(*entry) : std::optional<std::wstring>();
        return value ? EncodeUtf8(DropQuotes(*value)) : std::string();
    }

    const SectionPlan& Plan() const { return plan_; }
    const ProfileFile& File() const { return file_; }
    std::vector<Finding> Take() && { return std::move(findings_); }

private:
    const ProfileFile& file_;
    const SectionPlan& plan_;
    std::vector<Finding> findings_;
};

bool HasStageList(const ProfileLook& look) {
    const ProfileFileSection* const section = look.File().FindSection(look.Plan().section);
    if (section == nullptr) return false;
    return std::any_of(section->entries.begin(), section->entries.end(), [](const ProfileEntry& entry) {
        const std::optional<NumberedName> name = SplitNumberedKey(entry.key);
        return name && IsSameKeyName(name->key, kListNumberKey);
    });
}

void LookAtMode(ProfileLook& look, const ExportTraits& traits) {
    const SectionPlan& plan = look.Plan();
    const std::string name(traits.name);
    const std::string mode = plan.procMode ? std::to_string(*plan.procMode) : "missing";
    if (plan.chain == ChainKind::Cr) {
        if (HasStageList(look))
            look.Warn("PROCMODE",
                      name +
                          " runs the CR chain whatever PROCMODE says, and reads no stage list; "
                          "another export runs the list",
                      "mode-and-export");
        return;
    }
    if (plan.chain != ChainKind::Fixed) return;
    if (plan.procMode == kDecidingMode)
        look.Warn("PROCMODE",
                  "PROCMODE is 3, which " + name +
                      " does not know: it runs the fixed chain; leave out "
                      "--export, or take ImageProcessingS or ImageProcessing_NS",
                  "mode-and-export");
    else if (HasStageList(look))
        look.Warn("PROCMODE",
                  "PROCMODE is " + mode +
                      ", so the fixed chain runs and nobody reads the stage list; "
                      "PROCMODE=2 runs the list",
                  "mode-and-list");
}

void LookAtList(ProfileLook& look) {
    const SectionPlan& plan = look.Plan();
    if (plan.chain == ChainKind::Fixed || plan.chain == ChainKind::Cr) return;
    if (plan.chain == ChainKind::LowExposure && look.File().FindSection(kLowSectionName) == nullptr)
        look.Warn("PROCMODE",
                  "PROCMODE is 3 and there is no section IP_LOWMODE, so a frame of low exposure runs on "
                  "that sequence's defaults; add the section",
                  "missing-low-section");
    bool runsAny = false;
    bool passesAny = false;
    for (const PlannedPlace& place : plan.places) {
        runsAny = runsAny || place.role == PlaceRole::ListedStage;
        if (place.role != PlaceRole::PassedOver) continue;
        passesAny = true;
        const std::string key = NumberedKeyName(place.position.value_or(0), kListNumberKey);
        const std::string number = std::to_string(place.stageNumber);
        look.Warn(key,
                  place.stage == nullptr
                      ? key + " is " + number + ", which is no stage; stages are 1 to 13"
                      : "the " + std::string(ChainName(plan.chain)) + " passes over stage " + number + " (" +
                            std::string(place.stage->title) + "); ImageProcessing_NE runs it",
                  "passed-over");
    }
    if (!runsAny)
        look.Warn("FunctionCount",
                  passesAny ? "the stage list holds no stage that runs; put one in"
                            : "the stage list is empty, so that no stage runs; FunctionCount and "
                              "00_Function_Number begin a list",
                  "empty-list");
}

// Whether the run goes by some line of its section. What it asks the sensor's values for is no setting of it.
bool ReadsAnyLine(const SectionPlan& plan) {
    return std::any_of(plan.places.begin(), plan.places.end(), [](const PlannedPlace& place) {
        return place.role != PlaceRole::Sensor &&
               std::any_of(place.keys.begin(), place.keys.end(),
                           [](const PlannedKey& key) { return key.entry != nullptr; });
    });
}

// Sections for something else than a run, such as that of the sensor.
void LookAtReading(ProfileLook& look) {
    const SectionPlan& plan = look.Plan();
    const ProfileFileSection* const section = look.File().FindSection(plan.section);
    if (section == nullptr || section->entries.empty() || HasStageList(look)) return;
    const bool isOfWeakFrames = IsSameKeyName(plan.section, kLowSectionName);
    if (ReadsAnyLine(plan) && !isOfWeakFrames) return;
    const std::string what =
        isOfWeakFrames ? "section " + std::string(kLowSectionName) +
                             " holds the stages of weak frames, and by itself runs the " +
                             std::string(ChainName(plan.chain)) + "; name the section with PROCMODE=3"
                       : "the " + std::string(ChainName(plan.chain)) + " reads no line of section '" +
                             plan.section + "' and runs on its defaults; name a section with settings for it";
    look.Warn("", what, "nothing-read");
}

void LookAtFolder(ProfileLook& look, std::string_view switchKey, std::string_view pathKey, bool isMade) {
    if (look.Number(switchKey, 0) == 0) return;
    const std::string key(pathKey);
    const std::string path = look.Text(pathKey);
    std::error_code ignored;
    std::string slashed = path;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    if (path.empty())
        look.Warn(switchKey, std::string(switchKey) + " is on and " + key + " is empty; name a folder",
                  "missing-folder");
    else if (!isMade && !slashed.ends_with('/'))
        look.Warn(pathKey,
                  key +
                      " does not end with a separator, so that the folder's name becomes part of every "
                      "file's name; put one at its end",
                  "folder-separator");
    else if (!isMade && !std::filesystem::is_directory(PathOf(slashed), ignored))
        look.Warn(
            pathKey,
            "the folder '" + path + "' of " + key + " does not exist, so nothing is written there; make it",
            "missing-folder");
}

}  // namespace

std::vector<Finding> LookAtProfile(const ProfileFile& file, const SectionPlan& plan,
                                   const ExportTraits& traits) {
    ProfileLook look(file, plan);
    LookAtMode(look, traits);
    LookAtReading(look);
    LookAtList(look);
    LookAtFolder(look, "SAVE_IMAGE", "WRITE_PATH", false);
    LookAtFolder(look, "SAVE_BACKUP", "SAVE_BACKUPPATH", true);
    return std::move(look).Take();
}

std::optional<MeaninglessRun> FindMeaninglessRun(const ProfileFile& file, std::string_view section) {
    const std::span<const ProfileFileSection> all = file.Sections();
    const bool hasAny = std::any_of(all.begin(), all.end(), [](const ProfileFileSection& each) {
        return !each.name.empty() && !each.entries.empty();
    });
    constexpr const char* kConsequence = ", so that the fixed chain would run on its defaults";
    if (!hasAny)
        return MeaninglessRun{false,
                              {Severity::Error, file.Path(), 0, 1,
                               std::string("holds no section with settings") + kConsequence +
                                   "; 'vastrelline profile new' makes a profile",
                               "empty-profile"}};
    const ProfileFileSection* const found = file.FindSection(section);
    if (found == nullptr) {
        std::string names;
        for (const std::string& name : file.SectionNames())
            names.append(names.empty() ? "" : ", ").append(name);
        return MeaninglessRun{true,
                              {Severity::Error, file.Path(), 0, 1,
                               "has no section '" + std::string(section) + "'" + kConsequence + "; " +
                                   DidYouMean(section, file.SectionNames(), "it has " + names),
                               "missing-section"}};
    }
    if (found->entries.empty())
        return MeaninglessRun{true,
                              {Severity::Error, file.Path(), found->lineNumber, 1,
                               "section '" + std::string(section) + "' is empty" + kConsequence + "; fill it",
                               "missing-section"}};
    return std::nullopt;
}

ExportKind ChooseExport(const ProfileFile& file, std::string_view section, const ExportWishes& wishes) {
    const bool isDeciding = ReadIntegerKey(file, section, "PROCMODE", kListedMode) == kDecidingMode;
    if (wishes.hasSensor) return ExportKind::NE;
    const bool needsGeometry = isDeciding || wishes.hasGeometry;
    if (wishes.wantsBitmap) return needsGeometry ? ExportKind::NS : ExportKind::N;
    return needsGeometry ? ExportKind::S : ExportKind::Plain;
}

}  // namespace vastrelline
