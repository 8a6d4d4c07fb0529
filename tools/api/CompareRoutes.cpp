// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "api/ApiRoutes.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "profile/EffectiveValues.h"
#include "profile/MissingSection.h"
#include "profile/ProfileDiff.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "workbench/CompareJobs.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

// A field that may be null or missing: empty then.
std::string OptionalText(const ApiCall& call, const char* name) {
    return call.Body(name).is_null() ? std::string() : call.BodyText(name);
}

// A page can name no file that the command line does not.
void TestAgainst(const ApiCall& call, const std::string& path, bool isLibrary) {
    const std::vector<AgainstFile>& files = call.bench.Against();
    const auto isMeant = [&](const AgainstFile& file) {
        return file.path == path && file.isLibrary == isLibrary;
    };
    if (std::none_of(files.begin(), files.end(), isMeant))
        throw InputError(path,
                         isLibrary ? "is no library of this workbench" : "is no profile of this workbench",
                         "name it by --against when the workbench begins");
}

std::string LeafOf(const std::string& path) { return PathOf(path).filename().string(); }

std::string NameOf(const ComparedSide& side, const SectionPlan& plan) {
    std::string name = LeafOf(side.profilePath) + " [" + side.desk.section + "], ";
    name.append(ChainName(plan.chain));
    if (!side.library.empty()) name.append(", by ").append(LeafOf(side.library));
    return name;
}

// Names a side and reads its values as its run does: what is off is not there.
std::vector<EffectivePlace> ReadSide(const ApiCall& call, ComparedSide& side) {
    const ProfileFile file(
        side.profilePath, SwitchOff(side.profilePath, side.desk.bytes, side.desk.section, side.desk.offKeys));
    const SectionPlan plan = call.bench.PlanOf(file, side.desk.section);
    side.name = NameOf(side, plan);
    return ReadEffectiveValues(file, plan);
}

HttpAnswer BeginComparison(const ApiCall& call) {
    const std::string profile = OptionalText(call, "profile");
    const std::string section = OptionalText(call, "section");
    const std::string library = OptionalText(call, "library");
    if (profile.empty() && section.empty() && library.empty())
        throw UsageError("a comparison needs another profile, section or library", {});
    CompareOrder order;
    order.left = {{}, call.bench.CopyDesk().now, call.bench.ProfilePath(), {}};
    order.right = order.left;
    if (!profile.empty()) {
        TestAgainst(call, profile, false);
        order.right.profilePath = profile;
        order.right.desk.bytes = ProfileFile::Read(profile).Text().Bytes();
    }
    if (!section.empty()) order.right.desk.section = section;
    // Places are off in the desk's own section only.
    if (!profile.empty() || !section.empty()) order.right.desk.offKeys.clear();
    const ProfileFile file(order.right.profilePath, order.right.desk.bytes);
    if (file.FindSection(order.right.desk.section) == nullptr)
        throw MissingSection(file, order.right.desk.section);
    if (!library.empty()) {
        TestAgainst(call, library, true);
        // The loader takes a name without a separator for one to be looked for in its own folders.
        order.right.library = std::filesystem::absolute(PathOf(library)).string();
    }
    const std::vector<EffectivePlace> left = ReadSide(call, order.left);
    order.keys = DiffPlaces(left, ReadSide(call, order.right));
    const uint64_t id = call.bench.NextJob();
    call.bench.Comparisons().Begin(id, std::move(order));
    return JsonAnswer({{"job", id}});
}

HttpAnswer GetComparison(const ApiCall& call) {
    const std::shared_ptr<const Comparison> found = call.bench.Comparisons().Find(call.PartNumber(0));
    if (found == nullptr)
        throw InputError({}, "comparison " + std::string(call.Part(0)) + " is not kept",
                         "a newer one has taken its place");
    return JsonAnswer(ComparisonToJson(*found));
}

constexpr ApiRoute kRoutes[] = {
    {"POST", "api/compare", BeginComparison},
    {"GET", "api/compare/*", GetComparison},
};

}  // namespace

std::span<const ApiRoute> CompareRoutes() { return kRoutes; }

}  // namespace vastrelline
