// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "api/ApiRoutes.h"
#include "keys/KeyTable.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "profile/EffectiveValues.h"
#include "profile/KeyExplanation.h"
#include "profile/KeyLookup.h"
#include "profile/PlainWords.h"
#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMostItems = 60;
constexpr size_t kExplanationWidth = 58;

bool BeginsWith(std::string_view text, std::string_view head) {
    if (text.size() < head.size()) return false;
    return std::equal(head.begin(), head.end(), text.begin(), [](char one, char other) {
        return std::toupper(static_cast<unsigned char>(one)) ==
               std::toupper(static_cast<unsigned char>(other));
    });
}

// Collects what a line may go on with, each word once.
class Items {
public:
    explicit Items(std::string_view head) : head_(head) {}

    void Add(const std::string& label, std::string_view detail, std::string_view info) {
        if (items_.size() == kMostItems || !BeginsWith(label, head_) || !known_.insert(label).second) return;
        items_.push_back({{"label", label}, {"detail", detail}, {"info", PlainWords(info)}});
    }

    Json Take() { return {{"items", std::move(items_)}}; }

private:
    std::string_view head_;
    std::set<std::string> known_;
    Json items_ = Json::array();
};

// A key of the list may stand at any position that the line begins with.
void AddPositions(Items& items, std::string_view text) {
    constexpr size_t kPositionDigits = 2;
    const size_t digits = static_cast<size_t>(
        std::find_if(text.begin(), text.end(), [](char c) { return c < '0' || c > '9'; }) - text.begin());
    if (digits < kPositionDigits || digits > kPositionDigits + 1) return;
    const std::string head = std::string(text.substr(0, digits)).append("_");
    items.Add(std::string(head).append(kListNumberKey), "number of the stage here", {});
    for (const Stage& stage : AllStageRows())
        for (const Key& key : stage.keys)
            items.Add(std::string(head).append(key.name), stage.title, key.meaning);
}

HttpAnswer Complete(const ApiCall& call) {
    const std::string text = call.Field("text");
    const DeskCopy desk = call.bench.CopyDesk();
    const ProfileFile file(call.bench.ProfilePath(), desk.now.bytes);
    const std::string section = call.Field("section").empty() ? desk.now.section : call.Field("section");
    Items items(text);
    if (text.starts_with('[')) {
        std::vector<std::string> names = file.SectionNames();
        for (const std::string_view name : {kSensorSectionName, kLowSectionName}) names.emplace_back(name);
        for (const std::string& name : names)
            items.Add(std::string("[").append(name).append("]"), "section", {});
        return JsonAnswer(items.Take());
    }
    const SectionPlan plan = call.bench.PlanOf(file, section);
    for (const EffectivePlace& place : ReadEffectiveValues(file, plan)) {
        if (place.section != section) continue;
        for (const EffectiveValue& value : place.values)
            items.Add(value.name, PlaceTitle(place), value.key->meaning);
    }
    AddPositions(items, text);
    for (const Key& key : SettingsOf(SettingsGroup::Common).keys)
        items.Add(std::string(key.name), "common settings", key.meaning);
    return JsonAnswer(items.Take());
}

HttpAnswer Explain(const ApiCall& call) {
    const std::string key = call.Field("key");
    const std::optional<LookedUp> found = LookUpKey(key);
    // Whoever types asks for half a word, too.
    if (!found) return JsonAnswer({{"text", nullptr}, {"nearest", FindNearestKey(key)}});
    return JsonAnswer({{"text", ExplainForPeople(*found, {}, kExplanationWidth)}});
}

constexpr ApiRoute kRoutes[] = {
    {"GET", "api/complete", Complete},
    {"GET", "api/explain", Explain},
};

}  // namespace

std::span<const ApiRoute> HelpRoutes() { return kRoutes; }

}  // namespace vastrelline
