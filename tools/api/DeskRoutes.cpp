// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/ApiRoutes.h"
#include "messages/ToolError.h"
#include "profile/LineDifference.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "profile/TextMerge.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

HttpAnswer GetState(const ApiCall& call) { return JsonAnswer(call.bench.State()); }

std::string SectionOf(const ApiCall& call, const Desk& desk) {
    std::string section = call.BodyText("section");
    return section.empty() ? desk.Now().section : section;
}

HttpAnswer Set(const ApiCall& call) {
    const std::string key = call.BodyText("key");
    const std::string value = call.BodyText("value");
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            next.bytes = SetKey(call.bench.ProfilePath(), next.bytes, SectionOf(call, desk), key, value);
            return next;
        },
        "key " + key));
}

HttpAnswer Unset(const ApiCall& call) {
    const std::string key = call.BodyText("key");
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            next.bytes =
                UnsetKey(call.bench.ProfilePath(), next.bytes, desk.FileBytes(), SectionOf(call, desk), key);
            return next;
        },
        {}));
}

HttpAnswer GetText(const ApiCall& call) {
    const DeskCopy desk = call.bench.CopyDesk();
    return JsonAnswer({{"textRevision", desk.textRevision},
                       {"text", EditorText(desk.now.bytes)},
                       {"saved", EditorText(desk.fileBytes)}});
}

HttpAnswer SetText(const ApiCall& call) {
    const uint64_t revision = call.BodyNumber("textRevision");
    const std::string text = call.BodyText("text");
    // The one of another page's change would let this page write over that without having seen it.
    uint64_t ownRevision = 0;
    const uint64_t after = call.bench.Change(
        [&](const Desk& desk) {
            if (revision != desk.TextRevision())
                throw ConflictError(call.bench.ProfilePath(), "has been changed since the page looked",
                                    "the page takes the new text");
            DeskState next = desk.Now();
            next.bytes = MergeText(call.bench.ProfilePath(), next.bytes, text);
            return next;
        },
        "text", &ownRevision);
    return JsonAnswer({{"revision", after}, {"textRevision", ownRevision}});
}

std::vector<std::string> SwitchKeys(const ApiCall& call, const Desk& desk) {
    std::vector<std::string> keys;
    const ProfileFile file(call.bench.ProfilePath(), desk.Now().bytes);
    for (const PlannedPlace& place : call.bench.PlanOf(file, desk.Now().section).places)
        keys.push_back(SwitchKeyOf(place));
    return keys;
}

std::string SwitchKeyAt(const ApiCall& call, const std::vector<std::string>& keys) {
    const uint64_t place = call.BodyNumber("place");
    const std::string key = place < keys.size() ? keys[static_cast<size_t>(place)] : std::string();
    if (key.empty()) throw UsageError("this place cannot be switched", {});
    return key;
}

HttpAnswer SwitchStage(const ApiCall& call) {
    const bool isOff = call.BodyFlag("off");
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            const std::string key = SwitchKeyAt(call, SwitchKeys(call, desk));
            if (isOff)
                next.offKeys.insert(key);
            else
                next.offKeys.erase(key);
            return next;
        },
        {}));
}

HttpAnswer Solo(const ApiCall& call) {
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            next.offKeys.clear();
            if (call.Body("place").is_null()) return next;
            const std::vector<std::string> keys = SwitchKeys(call, desk);
            const std::string own = SwitchKeyAt(call, keys);
            for (const std::string& key : keys)
                if (!key.empty() && key != own) next.offKeys.insert(key);
            return next;
        },
        {}));
}

HttpAnswer ChooseSection(const ApiCall& call) {
    std::string name = call.BodyText("name");
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            if (ProfileFile({}, next.bytes).FindSection(name) == nullptr)
                throw InputError(call.bench.ProfilePath(), "has no section '" + name + "'");
            if (next.section != name) next.offKeys.clear();
            next.section = name;
            return next;
        },
        {}));
}

HttpAnswer ChooseFrame(const ApiCall& call) {
    const uint64_t id = call.BodyNumber("id");
    if (id >= call.bench.Frames().Count()) throw UsageError("there is no frame " + std::to_string(id), {});
    return RevisionAnswer(call.bench.Change(
        [&](const Desk& desk) {
            DeskState next = desk.Now();
            next.frame = static_cast<size_t>(id);
            return next;
        },
        {}));
}

HttpAnswer Undo(const ApiCall& call) { return RevisionAnswer(call.bench.Undo()); }
HttpAnswer Redo(const ApiCall& call) { return RevisionAnswer(call.bench.Redo()); }
HttpAnswer Rerun(const ApiCall& call) { return RevisionAnswer(call.bench.Rerun()); }
HttpAnswer GoTo(const ApiCall& call) { return RevisionAnswer(call.bench.GoTo(call.BodyNumber("run"))); }

HttpAnswer GetDiff(const ApiCall& call) {
    const DeskCopy desk = call.bench.CopyDesk();
    const std::string old = EditorText(desk.fileBytes);
    const std::string now = EditorText(desk.now.bytes);
    Json changes = Json::array();
    for (const LineChange& change : FindLineChanges(old, now)) {
        changes.push_back({{"line", change.line},
                           {"old", change.old ? Json(*change.old) : Json(nullptr)},
                           {"new", change.now ? Json(*change.now) : Json(nullptr)}});
    }
    return JsonAnswer({{"changes", std::move(changes)},
                       {"unified", UnifiedDifference(old, now, "saved", "edited")},
                       {"textRevision", desk.textRevision}});
}

HttpAnswer Save(const ApiCall& call) {
    return RevisionAnswer(call.bench.Save(call.BodyNumber("textRevision")));
}

HttpAnswer Reload(const ApiCall& call) {
    const std::string keep = call.BodyText("keep");
    if (keep == "disk") return RevisionAnswer(call.bench.TakeDisk());
    if (keep == "mine") return RevisionAnswer(call.bench.KeepMine());
    throw UsageError("field 'keep' should be disk or mine", {});
}

HttpAnswer NameRun(const ApiCall& call) {
    return RevisionAnswer(call.bench.Name(call.BodyNumber("run"), call.BodyText("name")));
}

HttpAnswer Pin(const ApiCall& call) {
    const std::string side = call.BodyText("as");
    if (side != "A" && side != "B") throw UsageError("field 'as' should be A or B", {});
    std::optional<uint64_t> run;
    if (!call.Body("run").is_null()) run = call.BodyNumber("run");
    return RevisionAnswer(call.bench.Pin(run, side == "A"));
}

HttpAnswer Choose(const ApiCall& call) {
    return RevisionAnswer(
        call.bench.Choose(call.BodyNumber("a"), call.BodyNumber("b"), call.BodyText("better")));
}

HttpAnswer GetChoices(const ApiCall& call) { return JsonAnswer(call.bench.Choices()); }

constexpr ApiRoute kRoutes[] = {
    {"GET", "api/state", GetState},     {"POST", "api/set", Set},
    {"POST", "api/unset", Unset},       {"GET", "api/text", GetText},
    {"POST", "api/text", SetText},      {"POST", "api/stage", SwitchStage},
    {"POST", "api/solo", Solo},         {"POST", "api/section", ChooseSection},
    {"POST", "api/frame", ChooseFrame}, {"POST", "api/undo", Undo},
    {"POST", "api/redo", Redo},         {"POST", "api/rerun", Rerun},
    {"POST", "api/goto", GoTo},         {"GET", "api/diff", GetDiff},
    {"POST", "api/save", Save},         {"POST", "api/reload", Reload},
    {"POST", "api/name", NameRun},      {"POST", "api/pin", Pin},
    {"POST", "api/choose", Choose},     {"GET", "api/choices", GetChoices},
};

}  // namespace

std::span<const ApiRoute> DeskRoutes() { return kRoutes; }

}  // namespace vastrelline
