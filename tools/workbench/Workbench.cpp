// SPDX-License-Identifier: Apache-2.0
#include "workbench/Workbench.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "messages/UtcTime.h"
#include "platform/PathText.h"
#include "profile/ProfileStore.h"
#include "profile/TopLevel.h"
#include "runs/LookAtProfile.h"
#include "workbench/DeskEdits.h"
#include "workbench/DeskRun.h"
#include "workbench/RunJson.h"
#include "workbench/StateJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::chrono::milliseconds kCalm{100};  // after the last change

// Of the result, between black and the top level of its section.
std::shared_ptr<const SmallPicture> PictureOf(const KeptRun& run) {
    const bool hasResult = !run.points.empty() && run.points.back()->point.frame;
    if (run.isAside || !hasResult) return nullptr;
    const int32_t top = std::max(ReadTopLevel(run.basis->file, run.desk.section), 1);
    return std::make_shared<const SmallPicture>(MakeSmallPicture(*run.points.back()->point.frame, top));
}

// Where no file is, nobody's work can be written over.
bool IsGone(const std::string& path) {
    std::error_code error;
    return std::filesystem::status(PathOf(path), error).type() == std::filesystem::file_type::not_found;
}

}  // namespace

Workbench::Workbench(WorkbenchSetup setup, ExportCaller callExport, EventChannel& events)
    : setup_(std::move(setup)),
      callExport_(std::move(callExport)),
      events_(events),
      frames_(setup_.frames, setup_.sizes),
      desk_(DeskState{setup_.bytes, setup_.section, 0, {}}),
      history_(setup_.historyFile),
      sheets_([this](const DeskState& desk) { return InputOf(desk); }, callExport_, events_),
      comparisons_(MakeAsideRuns(), callExport_, events_) {
    RestorePast();
}

void Workbench::Start() { Touch(true); }

void Workbench::Stop() {
    task_.End();
    sheets_.End();
    comparisons_.End();
}

Json Workbench::State() const {
    const std::lock_guard lock(mutex_);
    return StateOf();
}

Json Workbench::StateOf() const {
    const ProfileFile file(setup_.profile, desk_.Now().bytes);
    return StateToJson({revision_, setup_.profile, desk_, file, KindOf(file, desk_.Now().section),
                        frames_.Items(), runs_, setup_.against, Notes()});
}

uint64_t Workbench::Touch(bool needsRun) {
    uint64_t revision = 0;
    {
        const std::lock_guard lock(mutex_);
        revision = ++revision_;
        events_.Publish("state", StateOf().dump(-1, ' ', false, Json::error_handler_t::replace), true);
    }
    if (needsRun) task_.Want([this](const std::stop_token& stop) { Run(stop); }, kCalm);
    return revision;
}

uint64_t Workbench::Change(const std::function<DeskState(const Desk& desk)>& edit, const std::string& topic,
                           uint64_t* textRevision) {
    bool isChanged = false;
    {
        const std::lock_guard lock(mutex_);
        const DeskState before = desk_.Now();
        desk_.Change(edit(desk_), topic);
        isChanged = desk_.Now() != before;
        if (textRevision != nullptr) *textRevision = desk_.TextRevision();
    }
    return Touch(isChanged);
}

uint64_t Workbench::Undo() {
    {
        const std::lock_guard lock(mutex_);
        desk_.Undo();
    }
    return Touch(true);
}

uint64_t Workbench::Redo() {
    {
        const std::lock_guard lock(mutex_);
        desk_.Redo();
    }
    return Touch(true);
}

uint64_t Workbench::Rerun() { return Touch(true); }

uint64_t Workbench::GoTo(uint64_t run) {
    return Change(
        [&](const Desk& desk) {
            const HistoryRow* const row = runs_.FindRow(run);
            if (row == nullptr) throw InputError({}, "there is no run " + std::to_string(run));
            DeskState next = row->desk;
            if (!row->lostFrame.empty()) next.frame = desk.Now().frame;
            return next;
        },
        {});
}

uint64_t Workbench::Save(uint64_t textRevision) {
    {
        const std::lock_guard lock(mutex_);
        if (textRevision != desk_.TextRevision())
            throw ConflictError(setup_.profile, "has been edited since the page looked",
                                "look at the changes again");
        // The file may be what the desk last saw of it, and still be what nobody has looked at.
        const bool isUndecided = desk_.IsChangedOnDisk() && desk_.HasUnsaved();
        const bool isGone = IsGone(setup_.profile);
        if (!isGone && (isUndecided || ProfileFile::Read(setup_.profile).Text().Bytes() != desk_.FileBytes()))
            throw ConflictError(setup_.profile, "was saved by another program meanwhile",
                                "take its text or keep yours, and save again");
        if (isGone)
            StoreProfileFile(setup_.profile, desk_.Now().bytes, false);
        else if (desk_.HasUnsaved())
            ReplaceProfileFile(setup_.profile, desk_.FileBytes(), desk_.Now().bytes);
        desk_.NoteSaved(desk_.Now().bytes);
    }
    return Touch(false);
}

void Workbench::PollDisk() {
    bool needsRun = false;
    try {
        const auto read = [&] { return ProfileFile::Read(setup_.profile).Text().Bytes(); };
        const std::string seen = read();
        const std::lock_guard lock(mutex_);
        if (seen == desk_.FileBytes()) return;
        // Once more where nobody saves: what was seen may be what this desk has replaced since.
        std::string bytes = read();
        if (bytes == desk_.FileBytes()) return;
        const DeskState before = desk_.Now();
        desk_.NoteDisk(std::move(bytes));
        needsRun = desk_.Now() != before;
    } catch (const ToolError&) {
        return;  // a file that cannot be read just now is one that somebody is writing
    }
    Touch(needsRun);
}

uint64_t Workbench::TakeDisk() {
    {
        const std::lock_guard lock(mutex_);
        desk_.TakeDisk();
    }
    return Touch(true);
}

uint64_t Workbench::KeepMine() {
    {
        const std::lock_guard lock(mutex_);
        desk_.KeepMine();
    }
    return Touch(false);
}

std::shared_ptr<const KeptRun> Workbench::FindRun(std::string_view name) const {
    const std::lock_guard lock(mutex_);
    if (name == "latest") {
        if (std::shared_ptr<const KeptRun> latest = runs_.Latest()) return latest;
        throw InputError({}, "there is no run with a picture yet");
    }
    uint64_t id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    if (std::shared_ptr<const KeptRun> run = isNumber ? runs_.Find(id) : nullptr) return run;
    throw InputError({}, "the frames of run '" + std::string(name) + "' are not kept",
                     "go to it, and it is run again");
}

Json Workbench::Timings() const {
    const std::lock_guard lock(mutex_);
    return TimingsToJson(runs_.Rows());
}

DeskCopy Workbench::CopyDesk() const {
    const std::lock_guard lock(mutex_);
    return {desk_.Now(), desk_.FileBytes(), desk_.TextRevision()};
}

ExportKind Workbench::KindOf(const ProfileFile& file, const std::string& section) const {
    if (setup_.namedExport) return *setup_.namedExport;
    return ChooseExport(file, section,
                        {false, setup_.call.geometry.has_value(), !setup_.call.sensorFolder.empty()});
}

SectionPlan Workbench::PlanOf(const ProfileFile& file, const std::string& section) const {
    return MakeSectionPlan(file, section, KindOf(file, section));
}

std::string Workbench::DescribeChange(const DeskState& before, const DeskState& after) const {
    std::string text;
    const auto add = [&](const std::string& more) {
        if (!more.empty()) text.append(text.empty() ? "" : "; ").append(more);
    };
    if (before.frame != after.frame) add("frame " + frames_.NameOf(after.frame));
    if (before.section != after.section) add("section " + after.section);
    add(DescribeEdits(ProfileFile({}, before.bytes), ProfileFile({}, after.bytes), after.section));
    if (text.empty() && before.bytes != after.bytes) add("text");
    for (const std::string& key : after.offKeys)
        if (!before.offKeys.contains(key)) add(key + " off");
    for (const std::string& key : before.offKeys)
        if (!after.offKeys.contains(key)) add(key + " on");
    return text;
}

void Workbench::Run(const std::stop_token& stop) {
    KeptRun run;
    {
        const std::lock_guard lock(mutex_);
        const DeskState& now = desk_.Now();
        run = runs_.Begin(now, lastRun_ ? DescribeChange(*lastRun_, now) : "as the file has it", UtcMinute());
        lastRun_ = now;
    }
    const size_t frame = run.desk.frame;
    RunOne(std::move(run), stop);
    if (!stop.stop_requested()) RunPinnedBefore(frame, stop);
    if (!stop.stop_requested()) RunOnFrame(frame, stop);
}

void Workbench::RunOnFrame(size_t frame, const std::stop_token& stop) {
    uint64_t of = 0;
    DeskState desk;
    std::string change;
    {
        const std::lock_guard lock(mutex_);
        const std::shared_ptr<const KeptRun> a = runs_.A() ? runs_.Find(*runs_.A()) : nullptr;
        if (a == nullptr || a->desk.frame == frame) return;
        desk = a->desk;
        desk.frame = frame;
        change = a->change;
        of = a->of.value_or(a->id);
    }
    RunAside(of, std::move(desk), change, stop);
}

void Workbench::RunAside(uint64_t of, DeskState desk, const std::string& change,
                         const std::stop_token& stop) {
    KeptRun run = BeginAside(std::move(desk), change, of);
    {
        const std::lock_guard lock(mutex_);
        pinWhenDone_ = run.id;
    }
    RunOne(std::move(run), stop);
}

KeptRun Workbench::BeginAside(DeskState desk, std::string change, std::optional<uint64_t> of) {
    const std::lock_guard lock(mutex_);
    KeptRun run = runs_.Begin(std::move(desk), std::move(change), UtcMinute());
    run.isAside = true;
    run.of = of;
    return run;
}

AsideRuns Workbench::MakeAsideRuns() {
    return {[this](DeskState desk, std::string change) {
                return BeginAside(std::move(desk), std::move(change), {});
            },
            [this](KeptRun run) { Publish(std::move(run)); },
            [this](std::vector<uint64_t> ids) {
                const std::lock_guard lock(mutex_);
                runs_.Hold(std::move(ids));
            },
            [this](const DeskState& desk) { return InputOf(desk); }};
}

DeskRunInput Workbench::InputOf(const DeskState& desk) {
    DeskRunInput input{setup_.profile, nullptr, setup_.call};
    input.call.kind = KindOf(ProfileFile(setup_.profile, desk.bytes), desk.section);
    const std::shared_ptr<const LoadedFrame> loaded = frames_.Load(desk.frame);
    input.frame = std::shared_ptr<const Frame>(loaded, &loaded->frame);
    return input;
}

void Workbench::RunOne(KeptRun run, const std::stop_token& stop) {
    Publish(run);
    RunDesk(
        std::move(run), [this](const DeskState& desk) { return InputOf(desk); }, callExport_, stop,
        [this](KeptRun next) { Publish(std::move(next)); });
}

void Workbench::Publish(KeptRun run) {
    const uint64_t id = run.id;
    const bool isAside = run.isAside;
    const bool isNews = run.state != RunState::Running;
    const bool hasPicture = run.state == RunState::Picture || run.state == RunState::Complete;
    std::shared_ptr<const SmallPicture> picture = run.state == RunState::Picture ? PictureOf(run) : nullptr;
    {
        const std::lock_guard lock(mutex_);
        const bool isNew = runs_.FindRow(id) == nullptr;
        runs_.Put(std::move(run), std::move(picture));
        // What the file had is what everything is compared with, until somebody says otherwise.
        if (hasPicture && (id == pinWhenDone_ || (!hasPinned_ && !isAside))) {
            runs_.PinA(id);
            hasPinned_ = true;
        }
        if (const std::shared_ptr<const KeptRun> kept = runs_.Find(id))
            events_.Publish("run " + std::to_string(id),
                            Json({{"type", "run"}, {"run", RunToJson(*kept)}})
                                .dump(-1, ' ', false, Json::error_handler_t::replace));
        if (const HistoryRow* const row = isNew ? runs_.FindRow(id) : nullptr)
            history_.AddRun({*row, frames_.NameOf(row->desk.frame)});
    }
    if (isNews) Touch(false);
}

}  // namespace vastrelline
