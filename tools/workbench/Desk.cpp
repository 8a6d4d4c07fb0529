// SPDX-License-Identifier: Apache-2.0
#include "workbench/Desk.h"

#include <utility>

namespace vastrelline {

Desk::Desk(DeskState first) : now_(std::move(first)), fileBytes_(now_.bytes) {}

void Desk::Put(DeskState next) {
    if (next.bytes != now_.bytes) ++textRevision_;
    now_ = std::move(next);
}

void Desk::Step(DeskState next) {
    undo_.push_back(now_);
    redo_.clear();
    Put(std::move(next));
}

void Desk::Change(DeskState next, const std::string& topic, Clock::time_point when) {
    if (next == now_) return;
    const bool isSameStep =
        !topic.empty() && topic == topic_ && !undo_.empty() && when - lastChange_ <= kSameStep;
    topic_ = topic;
    lastChange_ = when;
    if (!isSameStep) return Step(std::move(next));
    redo_.clear();
    Put(std::move(next));
    // Pulled back to where it was: there is nothing to undo.
    if (now_ == undo_.back()) {
        undo_.pop_back();
        topic_.clear();
    }
}

void Desk::Undo() {
    if (undo_.empty()) return;
    redo_.push_back(now_);
    Put(std::move(undo_.back()));
    undo_.pop_back();
    topic_.clear();
}

void Desk::Redo() {
    if (redo_.empty()) return;
    undo_.push_back(now_);
    Put(std::move(redo_.back()));
    redo_.pop_back();
    topic_.clear();
}

void Desk::NoteSaved(std::string bytes) {
    fileBytes_ = std::move(bytes);
    isChangedOnDisk_ = false;
    topic_.clear();
}

void Desk::NoteDisk(std::string bytes) {
    if (bytes == fileBytes_) return;
    const bool hadUnsaved = HasUnsaved();
    fileBytes_ = std::move(bytes);
    topic_.clear();
    if (!hadUnsaved) return TakeDisk();
    isChangedOnDisk_ = HasUnsaved();
}

void Desk::TakeDisk() {
    isChangedOnDisk_ = false;
    topic_.clear();
    if (!HasUnsaved()) return;
    DeskState next = now_;
    next.bytes = fileBytes_;
    Step(std::move(next));
}

void Desk::KeepMine() { isChangedOnDisk_ = false; }

}  // namespace vastrelline
