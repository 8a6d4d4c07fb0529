// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace vastrelline {

// All that a run depends on and a person may change: what a step of undo brings back.
struct DeskState {
    std::string bytes;  // of the profile
    std::string section;
    size_t frame = 0;  // place in the list of frames
    // Keys that runs read as 0 whatever the profile says: the stage numbers and switches of places that are
    // off.
    std::set<std::string> offKeys;

    bool operator==(const DeskState&) const = default;
};

// The profile that is worked on, with its way back to the first state. The file itself is touched by nobody
// here: the desk is told what it holds.
class Desk {
public:
    using Clock = std::chrono::steady_clock;

    explicit Desk(DeskState first);

    const DeskState& Now() const { return now_; }
    const std::string& FileBytes() const { return fileBytes_; }

    // Grows with every change of the profile's text.
    uint64_t TextRevision() const { return textRevision_; }

    bool HasUnsaved() const { return now_.bytes != fileBytes_; }
    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }

    // Another program has saved the file while there were edits here; nobody has said yet whose counts.
    bool IsChangedOnDisk() const { return isChangedOnDisk_; }

    // Takes a new state. Changes of one topic that follow each other within kSameStep are one step of undo;
    // an empty topic is a step of its own. A state that is no other is none.
    void Change(DeskState next, const std::string& topic, Clock::time_point when = Clock::now());
    static constexpr std::chrono::seconds kSameStep{2};

    void Undo();  // nothing to undo: nothing happens
    void Redo();

    // The file holds these bytes now because this desk wrote them.
    void NoteSaved(std::string bytes);

    // Another program has written these. Without unsaved edits they are taken, as a step.
    void NoteDisk(std::string bytes);

    // What is to become of that: the file's bytes as a step, or those of the desk, whose edits stay unsaved.
    void TakeDisk();
    void KeepMine();

private:
    void Step(DeskState next);
    void Put(DeskState next);

    DeskState now_;
    std::string fileBytes_;
    std::vector<DeskState> undo_;
    std::vector<DeskState> redo_;
    std::string topic_;
    Clock::time_point lastChange_;
    uint64_t textRevision_ = 1;
    bool isChangedOnDisk_ = false;
};

}  // namespace vastrelline
