// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/JournalFile.h"
#include "workbench/HistoryLines.h"

namespace vastrelline {

// The file of a profile's history, in the folder for the tool's states: a profile has one whatever workbench
// it is worked on with. Empty where there is no such folder.
std::string HistoryFileOf(const std::string& profile);

// The runs of one profile as a file keeps them from one workbench to the next. One tool at a time holds the
// file. What cannot be kept is told once and disturbs nobody's work.
class RunHistory {
public:
    static constexpr size_t kMostRuns = 2000;  // beyond that, or kMostBytes, the file is written anew
    static constexpr size_t kKeptRuns = 1000;  // then
    static constexpr size_t kMostBytes = size_t{64} << 20;
    static constexpr size_t kMostProfileBytes = size_t{4} << 20;  // a run of a longer profile is not kept

    // path   empty: nothing is kept, and nothing is told of that
    explicit RunHistory(std::string path);

    // What the file held at the beginning; the second time nothing.
    PastRuns TakePast() { return std::exchange(past_, {}); }

    // Why nothing is kept, for people; empty: all is well.
    const std::string& Note() const { return note_; }

    void AddRun(const PastRun& run);
    void AddName(uint64_t run, const std::string& name) { Append(NameLine(run, name)); }
    void AddPin(std::optional<uint64_t> run, bool isA) { Append(PinLine(run, isA)); }
    void AddChoice(std::pair<uint64_t, uint64_t> pair, const std::array<int, 3>& counts) {
        Append(ChoiceLine(pair, counts));
    }

private:
    void Open();
    std::string ReadAll() const;
    void Append(std::string line);
    void Shorten();
    void GiveUp(std::string why);

    std::string path_;
    std::unique_ptr<JournalFile> file_;  // held; null: nothing is kept
    std::string note_;
    PastRuns past_;
    size_t runs_ = 0;
    size_t bytes_ = 0;
    bool isTorn_ = false;  // its last line has no end
    std::string lastProfile_;
};

}  // namespace vastrelline
