// SPDX-License-Identifier: Apache-2.0
#include "workbench/SheetJobs.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "frames/FrameStatistics.h"
#include "measure/FlatNoise.h"
#include "measure/MeasuredArea.h"
#include "messages/ErrorJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMedian = 3;
static_assert(kPercentiles[kMedian] == 50);

std::optional<double> NoiseOf(const Frame& frame) {
    try {
        return MeasureFlatNoise(frame, {0, 0, frame.width, frame.height}, ClippingLevel(frame)).deviation;
    } catch (const CannotMeasure&) {
        return std::nullopt;
    }
}

std::shared_ptr<const SheetPicture> MakePicture(const Frame& frame, size_t mostPixels) {
    return std::make_shared<const SheetPicture>(SheetPicture{
        ReduceFrame(frame, mostPixels), MeasureFrame(frame).percentiles[kMedian], NoiseOf(frame)});
}

std::optional<double> ChangedShare(const Frame& first, const Frame& other) {
    if (first.width != other.width || first.height != other.height) return std::nullopt;
    size_t changed = 0;
    for (size_t i = 0; i < first.pixels.size(); ++i)
        changed += first.pixels[i] != other.pixels[i] ? size_t{1} : size_t{0};
    return static_cast<double>(changed) / static_cast<double>(first.pixels.size());
}

std::string_view StateName(CellState state) {
    switch (state) {
        case CellState::Waiting:
            return "waiting";
        case CellState::Done:
            return "done";
        case CellState::Failed:
            return "failed";
    }
    return {};
}

Json PictureToJson(const std::shared_ptr<const SheetPicture>& picture) {
    if (picture == nullptr) return nullptr;
    return {{"median", picture->median}, {"noise", picture->noise ? Json(*picture->noise) : Json(nullptr)}};
}

// Makes the cells of one sheet, in their order.
class CellMaker {
public:
    CellMaker(const SheetJobs::InputMaker& makeInput, const ExportCaller& callExport, size_t mostPixels,
              const std::stop_token& stop)
        : makeInput_(makeInput), callExport_(callExport), mostPixels_(mostPixels), stop_(stop) {}

    // Whatever goes wrong is told in the cell. Errors: CancelledError
    SheetCell Make(const SheetOrder& order) {
        SheetCell cell;
        cell.label = order.label;
        const auto fail = [&](const ToolError& error) {
            cell.state = CellState::Failed;
            cell.error = error;
        };
        try {
            Fill(cell, order.desk);
            cell.state = CellState::Done;
        } catch (const CancelledError&) {
            throw;
        } catch (const ToolError& error) {
            fail(error);
        } catch (const std::bad_alloc&) {
            fail(ProcessingError({}, "there is not enough memory"));
        } catch (const std::exception& error) {
            fail(ProcessingError({}, error.what()));
        }
        isFirst_ = false;
        return cell;
    }

private:
    void Fill(SheetCell& cell, const DeskState& desk) {
        const DeskRunInput input = makeInput_(desk);
        // One frame by many values has one picture before.
        if (input.frame != lastRead_) {
            lastBefore_ = MakePicture(*input.frame, mostPixels_);
            lastRead_ = input.frame;
        }
        cell.before = lastBefore_;
        Frame result = RunDeskForResult(desk, input, callExport_, stop_);
        cell.after = MakePicture(result, mostPixels_);
        // Of two frames that are not the same one it would say nothing.
        if (first_ != nullptr && desk.frame == firstFrame_)
            cell.changedFromFirst = ChangedShare(*first_, result);
        if (!isFirst_) return;
        cell.changedFromFirst = 0.0;
        firstFrame_ = desk.frame;
        first_ = std::make_unique<const Frame>(std::move(result));
    }

    const SheetJobs::InputMaker& makeInput_;
    const ExportCaller& callExport_;
    const size_t mostPixels_;
    const std::stop_token& stop_;
    bool isFirst_ = true;
    size_t firstFrame_ = 0;
    std::unique_ptr<const Frame> first_;  // the first result, whole; null: there is none
    std::shared_ptr<const Frame> lastRead_;
    std::shared_ptr<const SheetPicture> lastBefore_;
};

}  // namespace

Json SheetToJson(const Sheet& sheet) {
    Json cells = Json::array();
    for (size_t i = 0; i < sheet.cells.size(); ++i) {
        const SheetCell& cell = sheet.cells[i];
        const SheetPicture* const sized = cell.after != nullptr ? cell.after.get() : cell.before.get();
        cells.push_back(
            {{"cell", i},
             {"label", cell.label},
             {"state", StateName(cell.state)},
             {"width", sized == nullptr ? Json(nullptr) : Json(sized->picture.width)},
             {"height", sized == nullptr ? Json(nullptr) : Json(sized->picture.height)},
             {"step", sized == nullptr ? Json(nullptr) : Json(sized->picture.step)},
             {"before", PictureToJson(cell.before)},
             {"after", PictureToJson(cell.after)},
             {"changedFromFirst", cell.changedFromFirst ? Json(*cell.changedFromFirst) : Json(nullptr)},
             {"error", ErrorJson(cell.error)}});
    }
    Json json = JobToJson(sheet.job);
    json["cells"] = std::move(cells);
    return json;
}

SheetJobs::SheetJobs(InputMaker makeInput, ExportCaller callExport, EventChannel& events)
    : makeInput_(std::move(makeInput)), callExport_(std::move(callExport)), events_(events) {}

void SheetJobs::Begin(uint64_t id, std::vector<SheetOrder> orders) {
    const std::lock_guard lock(mutex_);
    if (sheet_.job.id != 0 && sheet_.job.state == JobState::Running) {
        sheet_.job.state = JobState::Cancelled;
        PublishJob(events_, sheet_.job);
    }
    sheet_ = {};
    sheet_.job = {id, JobKind::Sheet, 0, orders.size(), JobState::Running, std::nullopt};
    for (const SheetOrder& order : orders) sheet_.cells.push_back({order.label, {}, {}, {}, {}, {}});
    PublishJob(events_, sheet_.job);
    // Within the lock, so that the job that is shown is the one that is at work.
    task_.Want(
        [this, id, orders = std::move(orders)](const std::stop_token& stop) { Make(id, orders, stop); },
        std::chrono::milliseconds(0));
}

std::shared_ptr<const Sheet> SheetJobs::Find(uint64_t id) const {
    const std::lock_guard lock(mutex_);
    return sheet_.job.id == id && id != 0 ? std::make_shared<const Sheet>(sheet_) : nullptr;
}

void SheetJobs::Cancel(uint64_t id) {
    Finish(id, JobState::Cancelled);
    const std::lock_guard lock(mutex_);
    if (sheet_.job.id == id) task_.Cancel();
}

void SheetJobs::Make(uint64_t id, const std::vector<SheetOrder>& orders, const std::stop_token& stop) {
    // Two pictures a cell, of two bytes a pixel.
    CellMaker maker(makeInput_, callExport_, kMostBytes / (orders.size() * 2 * sizeof(uint16_t)), stop);
    for (size_t i = 0; i < orders.size(); ++i) {
        if (stop.stop_requested()) return Finish(id, JobState::Cancelled);
        try {
            PutCell(id, i, maker.Make(orders[i]));
        } catch (const CancelledError&) {
            return Finish(id, JobState::Cancelled);
        }
    }
    Finish(id, JobState::Done);
}

void SheetJobs::PutCell(uint64_t id, size_t index, SheetCell cell) {
    const std::lock_guard lock(mutex_);
    if (sheet_.job.id != id || sheet_.job.state != JobState::Running) return;
    sheet_.cells[index] = std::move(cell);
    ++sheet_.job.done;
    // The last one is told together with the end.
    if (sheet_.job.done < sheet_.job.total) PublishJob(events_, sheet_.job);
}

void SheetJobs::Finish(uint64_t id, JobState state) {
    const std::lock_guard lock(mutex_);
    if (sheet_.job.id != id || sheet_.job.state != JobState::Running) return;
    sheet_.job.state = state;
    const bool isVain = std::all_of(sheet_.cells.begin(), sheet_.cells.end(),
                                    [](const SheetCell& cell) { return cell.state == CellState::Failed; });
    if (state == JobState::Done && isVain) {
        sheet_.job.state = JobState::Failed;
        sheet_.job.error = sheet_.cells.front().error;
    }
    PublishJob(events_, sheet_.job);
}

}  // namespace vastrelline
