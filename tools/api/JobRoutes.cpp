// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/ApiRoutes.h"
#include "api/ViewFields.h"
#include "messages/ToolError.h"
#include "profile/SectionPlan.h"
#include "workbench/CompareJobs.h"
#include "workbench/DeskEdits.h"
#include "workbench/SheetJobs.h"

namespace vastrelline {
namespace {

std::string BaseOf(const std::string& key) {
    const std::optional<NumberedName> numbered = SplitNumberedKey(key);
    return numbered ? std::string(numbered->key) : key;
}

// Before anything is made of them: each cell has a profile of its own.
void TestCount(size_t cells) {
    if (cells == 0) throw UsageError("a sheet needs something to show", {});
    if (cells > SheetJobs::kMostCells)
        throw UsageError("a sheet has at most " + std::to_string(SheetJobs::kMostCells) + " cells", {});
}

// One frame by many values of one key.
std::vector<SheetOrder> OrderValues(const ApiCall& call, const DeskState& desk) {
    const std::string named = call.BodyText("section");
    const std::string section = named.empty() ? desk.section : named;
    const std::string key = call.BodyText("key");
    const nlohmann::json& values = call.Body("values");
    if (!values.is_array()) throw UsageError("field 'values' should be a list of texts", {});
    TestCount(values.size());
    std::vector<SheetOrder> orders;
    for (const nlohmann::json& value : values) {
        if (!value.is_string()) throw UsageError("field 'values' should be a list of texts", {});
        const auto text = value.get<std::string>();
        SheetOrder order{BaseOf(key) + "=" + text, desk};
        order.desk.bytes = SetKey(call.bench.ProfilePath(), desk.bytes, section, key, text);
        orders.push_back(std::move(order));
    }
    return orders;
}

// Many frames by the desk's profile; null: all.
std::vector<SheetOrder> OrderFrames(const ApiCall& call, const DeskState& desk) {
    const size_t count = call.bench.Frames().Count();
    const nlohmann::json& frames = call.Body("frames");
    std::vector<SheetOrder> orders;
    const auto add = [&](uint64_t id) {
        if (id >= count) throw UsageError("there is no frame " + std::to_string(id), {});
        const auto frame = static_cast<size_t>(id);
        SheetOrder order{call.bench.Frames().NameOf(frame), desk};
        order.desk.frame = frame;
        orders.push_back(std::move(order));
    };
    if (frames.is_null()) {
        TestCount(count);
        for (size_t i = 0; i < count; ++i) add(i);
        return orders;
    }
    if (!frames.is_array()) throw UsageError("field 'frames' should be a list of numbers", {});
    TestCount(frames.size());
    for (const nlohmann::json& frame : frames) {
        if (!frame.is_number_unsigned()) throw UsageError("field 'frames' should be a list of numbers", {});
        add(frame.get<uint64_t>());
    }
    return orders;
}

HttpAnswer BeginSheet(const ApiCall& call) {
    const DeskState desk = call.bench.CopyDesk().now;
    const std::string kind = call.BodyText("kind");
    if (kind != "values" && kind != "frames") throw UsageError("field 'kind' should be values or frames", {});
    std::vector<SheetOrder> orders = kind == "values" ? OrderValues(call, desk) : OrderFrames(call, desk);
    const uint64_t id = call.bench.NextJob();
    call.bench.Sheets().Begin(id, std::move(orders));
    return JsonAnswer({{"job", id}});
}

std::shared_ptr<const Sheet> SheetOf(const ApiCall& call) {
    std::shared_ptr<const Sheet> sheet = call.bench.Sheets().Find(call.PartNumber(0));
    if (sheet != nullptr) return sheet;
    throw InputError({}, "job " + std::string(call.Part(0)) + " is not kept",
                     "a newer one has taken its place");
}

// A comparison has no cells; what it has stands at its own address.
HttpAnswer GetJob(const ApiCall& call) {
    const std::shared_ptr<const Comparison> comparison = call.bench.Comparisons().Find(call.PartNumber(0));
    return JsonAnswer(comparison != nullptr ? JobToJson(comparison->job) : SheetToJson(*SheetOf(call)));
}

HttpAnswer GetCellView(const ApiCall& call) {
    const std::shared_ptr<const Sheet> sheet = SheetOf(call);
    const uint64_t index = call.PartNumber(1);
    if (index >= sheet->cells.size()) throw UsageError("there is no such cell", {});
    const std::string which = call.Field("which");
    if (which != "before" && which != "after")
        throw UsageError("field 'which' should be before or after", {});
    const SheetCell& cell = sheet->cells[static_cast<size_t>(index)];
    const std::shared_ptr<const SheetPicture>& side = which == "before" ? cell.before : cell.after;
    if (side == nullptr) throw InputError({}, "cell " + std::to_string(index) + " has no such picture");
    return PixelsAnswer(RenderReduced(side->picture, ViewOf(call), WindowOf(call)));
}

HttpAnswer CancelJob(const ApiCall& call) {
    const uint64_t id = call.PartNumber(0);
    call.bench.Sheets().Cancel(id);
    call.bench.Comparisons().Cancel(id);
    return JsonAnswer({{"job", id}});
}

constexpr ApiRoute kRoutes[] = {
    {"POST", "api/sheet", BeginSheet},
    {"GET", "api/jobs/*", GetJob},
    {"GET", "api/jobs/*/cells/*/view", GetCellView},
    {"POST", "api/jobs/*/cancel", CancelJob},
};

}  // namespace

std::span<const ApiRoute> JobRoutes() { return kRoutes; }

}  // namespace vastrelline
