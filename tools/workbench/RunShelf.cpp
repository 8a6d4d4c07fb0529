// SPDX-License-Identifier: Apache-2.0
#include "workbench/RunShelf.h"

#include <algorithm>

namespace vastrelline {
namespace {

bool HasPicture(const KeptRun& run) {
    return run.basis != nullptr && (run.state == RunState::Picture || run.state == RunState::Complete);
}

}  // namespace

HistoryRow RowOf(const KeptRun& run, std::shared_ptr<const SmallPicture> picture) {
    HistoryRow row;
    row.id = run.id;
    row.when = run.when;
    row.change = run.change;
    row.hash = run.basis->hash;
    row.elapsedMs = run.basis->run.call.record.elapsedMs;
    row.desk = run.desk;
    for (const RanStage& stage : run.basis->run.stages) row.stages.emplace_back(stage.title, stage.elapsedMs);
    row.picture = std::move(picture);
    return row;
}

KeptRun RunShelf::Begin(DeskState desk, std::string change, std::string when) {
    KeptRun run;
    run.id = ++lastId_;
    run.desk = std::move(desk);
    run.change = std::move(change);
    run.when = std::move(when);
    if (const std::shared_ptr<const KeptRun> latest = Latest())
        run.elapsedBefore = latest->basis->run.call.record.elapsedMs;
    kept_[run.id] = std::make_shared<const KeptRun>(run);
    Forget();
    return run;
}

void RunShelf::Put(KeptRun run, std::shared_ptr<const SmallPicture> picture) {
    const uint64_t id = run.id;
    // Ended or failed before its stages were there: the picture stays.
    if (const std::shared_ptr<const KeptRun> before = Find(id);
        before != nullptr && HasPicture(*before) && !HasPicture(run))
        run.points = before->points;
    if (run.basis != nullptr && !run.isAside && !rows_.contains(id))
        rows_.emplace(id, RowOf(run, std::move(picture)));
    kept_[id] = std::make_shared<const KeptRun>(std::move(run));
    // Whoever has it made may pin it now, even if another one has begun meanwhile.
    Forget(id);
}

void RunShelf::Restore(std::vector<HistoryRow> rows) {
    for (HistoryRow& row : rows) {
        lastId_ = std::max(lastId_, row.id);
        rows_.insert_or_assign(row.id, std::move(row));
    }
}

std::shared_ptr<const KeptRun> RunShelf::Find(uint64_t id) const {
    const auto found = kept_.find(id);
    return found == kept_.end() ? nullptr : found->second;
}

std::shared_ptr<const KeptRun> RunShelf::Latest() const {
    const auto found = std::find_if(kept_.rbegin(), kept_.rend(), [](const auto& each) {
        return each.second->basis != nullptr && !each.second->isAside;
    });
    return found == kept_.rend() ? nullptr : found->second;
}

std::vector<const HistoryRow*> RunShelf::Rows() const {
    std::vector<const HistoryRow*> rows;
    for (auto each = rows_.rbegin(); each != rows_.rend(); ++each) rows.push_back(&each->second);
    return rows;
}

const HistoryRow* RunShelf::FindRow(uint64_t id) const {
    const auto found = rows_.find(id);
    return found == rows_.end() ? nullptr : &found->second;
}

bool RunShelf::Name(uint64_t id, std::string name) {
    const auto found = rows_.find(id);
    if (found == rows_.end()) return false;
    found->second.name = std::move(name);
    return true;
}

bool RunShelf::PinA(std::optional<uint64_t> id) {
    if (id && !kept_.contains(*id)) return false;
    a_ = id;
    Forget();
    return true;
}

bool RunShelf::PinB(std::optional<uint64_t> id) {
    if (id && !kept_.contains(*id)) return false;
    b_ = id;
    Forget();
    return true;
}

void RunShelf::Hold(std::vector<uint64_t> ids) {
    held_ = std::move(ids);
    Forget();
}

void RunShelf::Forget(uint64_t spared) {
    size_t newest = 0;
    for (auto each = kept_.end(); each != kept_.begin();) {
        --each;
        const uint64_t id = each->first;
        const bool isPinned =
            a_ == id || b_ == id || std::find(held_.begin(), held_.end(), id) != held_.end();
        const bool isShown = each->second->basis != nullptr && !each->second->isAside;
        const bool isNewest = (isShown && newest++ < kNewest) || id == lastId_ || id == spared;
        if (!isPinned && !isNewest) each = kept_.erase(each);
    }
}

}  // namespace vastrelline
