// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "messages/ToolError.h"
#include "views/ReducedFrame.h"
#include "workbench/DeskRun.h"
#include "workbench/Job.h"
#include "workbench/LatestTask.h"

namespace vastrelline {

// A cell that is asked for: what is to be run, and the words below it.
struct SheetOrder {
    std::string label;
    DeskState desk;
};

// One side of a cell. The figures are those of the whole frame.
struct SheetPicture {
    ReducedFrame picture;
    uint16_t median = 0;
    // As MeasureFlatNoise has it of the whole frame: the median of small blocks, so that edges and what the
    // picture shows hardly count. Nothing: the frame is too small.
    std::optional<double> noise;
};

enum class CellState : uint8_t { Waiting, Done, Failed };

struct SheetCell {
    std::string label;
    CellState state = CellState::Waiting;
    std::shared_ptr<const SheetPicture> before;  // the frame as it was read; null: not known
    std::shared_ptr<const SheetPicture> after;   // the result
    // Share of the pixels that the first cell's result does not have; nothing where sizes differ or one has
    // none.
    std::optional<double> changedFromFirst;
    std::optional<ToolError> error;  // Failed
};

// A sheet as it is now.
struct Sheet {
    Job job;
    std::vector<SheetCell> cells;
};

nlohmann::ordered_json SheetToJson(const Sheet& sheet);

// Makes sheets, cell by cell, one worker at a time. Of all sheets the newest counts: it ends an older one,
// whose pictures go. The pictures of a sheet take kMostBytes at most, however many there are: they are
// reduced for that.
class SheetJobs {
public:
    static constexpr size_t kMostBytes = size_t{192} << 20;
    static constexpr size_t kMostCells = 1000;

    // What a run needs beside its state; Errors: those of the frame's file. Called on the thread of the
    // sheets.
    using InputMaker = DeskInputMaker;

    // events   outlives this
    SheetJobs(InputMaker makeInput, ExportCaller callExport, EventChannel& events);

    // orders   1 to kMostCells
    void Begin(uint64_t id, std::vector<SheetOrder> orders);

    // Null: there is no such sheet, or a newer one has taken its place.
    std::shared_ptr<const Sheet> Find(uint64_t id) const;

    // Nothing happens to a sheet that is not at work.
    void Cancel(uint64_t id);

    // Ends what is at work, and waits for its end.
    void End() { task_.End(); }

private:
    void Make(uint64_t id, const std::vector<SheetOrder>& orders, const std::stop_token& stop);
    void PutCell(uint64_t id, size_t index, SheetCell cell);
    void Finish(uint64_t id, JobState state);

    const InputMaker makeInput_;
    const ExportCaller callExport_;
    EventChannel& events_;
    mutable std::mutex mutex_;
    Sheet sheet_;      // the newest; id 0: none yet
    LatestTask task_;  // last: its work uses the others
};

}  // namespace vastrelline
