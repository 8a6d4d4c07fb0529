// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "library/ExportRequest.h"
#include "messages/ToolError.h"
#include "server/EventChannel.h"
#include "workbench/AgainstFiles.h"
#include "workbench/CompareJobs.h"
#include "workbench/Desk.h"
#include "workbench/DeskRun.h"
#include "workbench/FrameShelf.h"
#include "workbench/LatestTask.h"
#include "workbench/RunHistory.h"
#include "workbench/RunShelf.h"
#include "workbench/SheetJobs.h"

namespace vastrelline {

// What a workbench begins with.
struct WorkbenchSetup {
    std::vector<std::string> frames;  // files; at least one
    RawSizes sizes;
    std::string profile;  // its path
    std::string bytes;    // as they were read there
    std::string section;
    ExportRequest call;                     // with everything but frame, profile and section
    std::string historyFile;                // where the runs are kept for later; empty: nowhere
    std::vector<std::string> notes;         // for the page
    std::vector<AgainstFile> against;       // what the desk may be compared with
    std::optional<ExportKind> namedExport;  // none: the one that fits the section
};

// Somebody else was faster: the page shows what is no longer so.
class ConflictError : public ToolError {
public:
    ConflictError(std::string where, std::string what, std::string remedy)
        : ToolError(ExitCode::Output, std::move(where), std::move(what), std::move(remedy)) {}
};

// What of the desk a request needs: all but the way back, which grows all day.
struct DeskCopy {
    DeskState now;
    std::string fileBytes;
    uint64_t textRevision = 0;
};

// What there is of a run.
struct RunRecord {
    HistoryRow row;
    std::shared_ptr<const KeptRun> kept;  // null: its frames are not in memory
};

// The desk with its frames and runs. All changes are followed by an event for the pages, and those that
// concern the picture by a run. May be called on several threads.
class Workbench {
public:
    // callExport, events   outlive the workbench
    Workbench(WorkbenchSetup setup, ExportCaller callExport, EventChannel& events);

    // Begins with the first run.
    void Start();

    // Ends what is at work; no event comes behind it.
    void Stop();

    // Everything that the page shows beside runs.
    nlohmann::ordered_json State() const;

    // A change of the desk's state: what `edit` makes of it. Returns the new revision.
    //
    // topic          as Desk::Change
    // textRevision   takes that of the text that this change has left, whatever comes behind it; may be null
    // Errors         those of `edit`
    uint64_t Change(const std::function<DeskState(const Desk& desk)>& edit, const std::string& topic,
                    uint64_t* textRevision = nullptr);

    uint64_t Undo();
    uint64_t Redo();
    uint64_t Rerun();

    // Brings back the desk of an older run. Errors: InputError if there is no such run
    uint64_t GoTo(uint64_t run);

    // Writes the profile's file, anew where it is gone. Errors: ConflictError if somebody else has, or if the
    // text has another revision; OutputError
    uint64_t Save(uint64_t textRevision);

    // Looks whether another program has saved the file.
    void PollDisk();
    uint64_t TakeDisk();
    uint64_t KeepMine();

    uint64_t Name(uint64_t run, const std::string& name);
    uint64_t Pin(std::optional<uint64_t> run, bool isA);
    uint64_t Choose(uint64_t a, uint64_t b, const std::string& better);
    nlohmann::ordered_json Choices() const;

    // Rows of the history that are older than a run. Errors: InputError for a picture that is not there
    nlohmann::ordered_json HistoryBefore(uint64_t run) const;
    SmallPicture HistoryPicture(uint64_t run) const;

    // Of one that stands aside, too, as long as it is kept. Errors: InputError if there is no such run, or it
    // has no picture
    RunRecord FindRecord(uint64_t run) const;
    std::optional<uint64_t> PinnedA() const;

    // "latest" or a number; Errors: InputError if its frames are not kept
    std::shared_ptr<const KeptRun> FindRun(std::string_view name) const;
    nlohmann::ordered_json Timings() const;

    DeskCopy CopyDesk() const;
    const std::string& ProfilePath() const { return setup_.profile; }

    // What a run of a section would do, by the export that this workbench calls. It points into the file.
    SectionPlan PlanOf(const ProfileFile& file, const std::string& section) const;
    FrameShelf& Frames() { return frames_; }

    // What is made beside the desk's own runs. Jobs of all kinds share their numbers.
    uint64_t NextJob() { return ++lastJob_; }
    SheetJobs& Sheets() { return sheets_; }
    CompareJobs& Comparisons() { return comparisons_; }
    const std::vector<AgainstFile>& Against() const { return setup_.against; }

private:
    DeskRunInput InputOf(const DeskState& desk);
    AsideRuns MakeAsideRuns();
    KeptRun BeginAside(DeskState desk, std::string change, std::optional<uint64_t> of);
    ExportKind KindOf(const ProfileFile& file, const std::string& section) const;
    std::string DescribeChange(const DeskState& before, const DeskState& after) const;
    uint64_t Touch(bool needsRun);
    nlohmann::ordered_json StateOf() const;
    void Run(const std::stop_token& stop);
    void RunOnFrame(size_t frame, const std::stop_token& stop);  // side A, where it shows another one
    void RunOne(KeptRun run, const std::stop_token& stop);
    void Publish(KeptRun run);
    void RestorePast();
    void RunPinnedBefore(size_t frame, const std::stop_token& stop);
    std::vector<std::string> Notes() const;
    // Becomes side A, with the settings of a run of the history.
    void RunAside(uint64_t of, DeskState desk, const std::string& change, const std::stop_token& stop);

    const WorkbenchSetup setup_;
    const ExportCaller callExport_;
    EventChannel& events_;
    FrameShelf frames_;
    mutable std::mutex mutex_;  // of all below but the task
    Desk desk_;
    RunShelf runs_;
    uint64_t revision_ = 1;
    RunHistory history_;
    ChoiceCounts choices_;
    std::optional<uint64_t> pinnedBefore_;  // side A of the last workbench, until it was run again
    std::optional<DeskState> lastRun_;
    bool hasPinned_ = false;
    uint64_t pinWhenDone_ = 0;  // a run
    std::atomic<uint64_t> lastJob_ = 0;
    SheetJobs sheets_;
    CompareJobs comparisons_;
    LatestTask task_;  // last, beside the jobs: their work uses the others
};

}  // namespace vastrelline
