// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "messages/ToolError.h"
#include "workbench/HistoryJson.h"
#include "workbench/Workbench.h"

// What a workbench keeps of its runs for people, and from one day to the next.

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMostNameBytes = 400;

}  // namespace

uint64_t Workbench::Name(uint64_t run, const std::string& name) {
    // Every state that the pages get has it, and the history's file for good.
    if (name.size() > kMostNameBytes) throw UsageError("this name is too long", "a few words are enough");
    {
        const std::lock_guard lock(mutex_);
        if (!runs_.Name(run, name)) throw InputError({}, "there is no run " + std::to_string(run));
        history_.AddName(run, name);
    }
    return Touch(false);
}

uint64_t Workbench::Pin(std::optional<uint64_t> run, bool isA) {
    {
        const std::lock_guard lock(mutex_);
        if (!(isA ? runs_.PinA(run) : runs_.PinB(run)))
            throw InputError({}, "the frames of run " + std::to_string(run.value_or(0)) + " are not kept",
                             "go to it, and it is run again");
        if (isA) {
            hasPinned_ = true;
            pinnedBefore_.reset();
            pinWhenDone_ = 0;  // what is still at work for side A comes too late
        }
        history_.AddPin(run, isA);
    }
    return Touch(false);
}

uint64_t Workbench::Choose(uint64_t a, uint64_t b, const std::string& better) {
    constexpr std::array<std::string_view, 3> kWords{"a", "b", "same"};
    const auto word = std::find(kWords.begin(), kWords.end(), better);
    if (word == kWords.end()) throw UsageError("'" + better + "' is no choice", "say a, b or same");
    {
        const std::lock_guard lock(mutex_);
        const auto place = static_cast<size_t>(word - kWords.begin());
        ++choices_[{a, b}][place];
        std::array<int, 3> one{};
        one[place] = 1;
        history_.AddChoice({a, b}, one);
    }
    return Touch(false);
}

Json Workbench::Choices() const {
    const std::lock_guard lock(mutex_);
    Json array = Json::array();
    for (const auto& [pair, counts] : choices_)
        array.push_back({{"a", pair.first},
                         {"b", pair.second},
                         {"aBetter", counts[0]},
                         {"bBetter", counts[1]},
                         {"same", counts[2]}});
    return {{"choices", std::move(array)}};
}

void Workbench::RestorePast() {
    std::map<std::string, size_t> frames;
    for (size_t i = 0; i < frames_.Count(); ++i) frames.emplace(frames_.NameOf(i), i);
    PastRuns past = history_.TakePast();
    std::vector<HistoryRow> rows;
    for (PastRun& run : past.runs) {
        const auto frame = frames.find(run.frameName);
        if (frame == frames.end())
            run.row.lostFrame = std::move(run.frameName);
        else
            run.row.desk.frame = frame->second;
        rows.push_back(std::move(run.row));
    }
    runs_.Restore(std::move(rows));
    choices_ = std::move(past.choices);
    pinnedBefore_ = past.pinnedA;
}

void Workbench::RunPinnedBefore(size_t frame, const std::stop_token& stop) {
    uint64_t of = 0;
    DeskState desk;
    std::string change;
    {
        const std::lock_guard lock(mutex_);
        const HistoryRow* const row = pinnedBefore_ ? runs_.FindRow(*pinnedBefore_) : nullptr;
        if (row == nullptr) return;
        desk = row->desk;
        desk.frame = frame;
        change = row->change;
        of = *pinnedBefore_;
    }
    RunAside(of, std::move(desk), change, stop);
    const std::lock_guard lock(mutex_);
    // Ended by a newer change it is tried again behind that.
    if (!stop.stop_requested()) pinnedBefore_.reset();
}

std::vector<std::string> Workbench::Notes() const {
    std::vector<std::string> notes = setup_.notes;
    if (!history_.Note().empty()) notes.push_back(history_.Note());
    return notes;
}

Json Workbench::HistoryBefore(uint64_t run) const {
    const std::lock_guard lock(mutex_);
    return {{"history", HistoryToJson(runs_, run)}};
}

RunRecord Workbench::FindRecord(uint64_t run) const {
    const std::lock_guard lock(mutex_);
    const std::shared_ptr<const KeptRun> kept = runs_.Find(run);
    const HistoryRow* const row = runs_.FindRow(run);
    if (row != nullptr) return {*row, kept};
    if (kept == nullptr || kept->basis == nullptr)
        throw InputError({}, "there is no run " + std::to_string(run) + " with a picture");
    return {RowOf(*kept, nullptr), kept};
}

std::optional<uint64_t> Workbench::PinnedA() const {
    const std::lock_guard lock(mutex_);
    return runs_.A();
}

SmallPicture Workbench::HistoryPicture(uint64_t run) const {
    const std::lock_guard lock(mutex_);
    const HistoryRow* const row = runs_.FindRow(run);
    if (row == nullptr || row->picture == nullptr)
        throw InputError({}, "there is no picture of run " + std::to_string(run));
    return *row->picture;
}

}  // namespace vastrelline
