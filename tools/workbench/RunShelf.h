// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "views/SmallPicture.h"
#include "workbench/KeptRun.h"

namespace vastrelline {

// A run that has given a picture, as long as the workbench lives and longer: its frames go, the way back to
// it stays.
struct HistoryRow {
    uint64_t id = 0;
    std::string name;  // that a person gave it
    std::string when;  // UTC
    std::string change;
    std::string hash;
    double elapsedMs = 0.0;
    DeskState desk;
    std::vector<std::pair<std::string, std::optional<double>>> stages;  // title and time in milliseconds
    std::string
        lostFrame;  // of an older workbench: the frame's name, which today's list lacks; empty: `desk` has it
    std::shared_ptr<const SmallPicture> picture;  // of the result; null: none
};

// Of a run that has a picture.
HistoryRow RowOf(const KeptRun& run, std::shared_ptr<const SmallPicture> picture);

// The runs of a workbench.
class RunShelf {
public:
    // A new run, under the next number.
    KeptRun Begin(DeskState desk, std::string change, std::string when);

    // What has become of it. One that gave no picture is forgotten as soon as the next one begins.
    //
    // picture   for its row; may be null
    void Put(KeptRun run, std::shared_ptr<const SmallPicture> picture = nullptr);

    // Rows of runs before this workbench, before its first run: numbers go on behind them.
    void Restore(std::vector<HistoryRow> rows);

    // Null where its frames are not kept.
    std::shared_ptr<const KeptRun> Find(uint64_t id) const;

    // The newest that has a picture and does not stand aside; null without one.
    std::shared_ptr<const KeptRun> Latest() const;

    // Those of runs that do not stand aside, newest first.
    std::vector<const HistoryRow*> Rows() const;
    const HistoryRow* FindRow(uint64_t id) const;

    // Whether there is such a run.
    bool Name(uint64_t id, std::string name);

    // A side of the comparison; nothing: A shows nothing, B the newest. Whether the run's frames are kept.
    bool PinA(std::optional<uint64_t> id);
    bool PinB(std::optional<uint64_t> id);
    std::optional<uint64_t> A() const { return a_; }
    std::optional<uint64_t> B() const { return b_; }

    // Keeps runs beside those that are kept anyway, until the next call: they are looked at elsewhere.
    void Hold(std::vector<uint64_t> ids);

private:
    static constexpr size_t kNewest = 4;  // that keep their frames

    void Forget(uint64_t spared = 0);

    uint64_t lastId_ = 0;
    std::map<uint64_t, std::shared_ptr<const KeptRun>> kept_;
    std::map<uint64_t, HistoryRow> rows_;
    std::optional<uint64_t> a_;
    std::optional<uint64_t> b_;
    std::vector<uint64_t> held_;
};

}  // namespace vastrelline
