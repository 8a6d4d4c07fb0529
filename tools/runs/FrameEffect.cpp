// SPDX-License-Identifier: Apache-2.0
#include "runs/FrameEffect.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <optional>

#include "profile/SectionPlan.h"
#include "profile/StageAlignment.h"

namespace vastrelline {
namespace {

FrameEffect Compare(std::string title, const Frame& first, const Frame& second) {
    FrameEffect effect{std::move(title), 0.0, 0.0, 0};
    uint64_t sum = 0;
    size_t changed = 0;
    for (size_t i = 0; i < first.pixels.size(); ++i) {
        const int32_t difference = std::abs(int32_t{first.pixels[i]} - int32_t{second.pixels[i]});
        sum += static_cast<uint64_t>(difference);
        changed += difference != 0 ? 1 : 0;
        effect.largest = std::max(effect.largest, difference);
    }
    const auto count = static_cast<double>(std::max<size_t>(first.pixels.size(), 1));
    effect.changedShare = static_cast<double>(changed) / count;
    effect.meanDifference = static_cast<double>(sum) / count;
    return effect;
}

const StageFrame* FindKind(const RunFrames& run, StageFrameKind kind) {
    const auto found = std::find_if(run.frames.begin(), run.frames.end(),
                                    [kind](const StageFrame& frame) { return frame.kind == kind; });
    return found == run.frames.end() ? nullptr : &*found;
}

std::vector<const StageFrame*> AfterStages(const RunFrames& run) {
    std::vector<const StageFrame*> frames;
    for (const StageFrame& frame : run.frames)
        if (frame.kind == StageFrameKind::AfterStage) frames.push_back(&frame);
    return frames;
}

std::vector<int32_t> NumbersOf(const RunFrames& run, const std::vector<const StageFrame*>& frames) {
    std::vector<int32_t> numbers;
    numbers.reserve(frames.size());
    for (const StageFrame* const frame : frames)
        numbers.push_back(run.stages[frame->stage].place->stageNumber);
    return numbers;
}

std::string PositionOf(const RanStage& stage) {
    if (!stage.place->position) return {};
    std::string digits = std::to_string(*stage.place->position);
    if (digits.size() < 2) digits.insert(0, 1, '0');
    return digits;
}

std::string TitleOf(const RanStage& first, const RanStage& second) {
    const std::string here = PositionOf(first);
    const std::string there = PositionOf(second);
    std::string title = here;
    title.append(here.empty() ? "" : " ").append(first.title);
    if (here != there && !there.empty()) title.append(" (").append(there).append(" in B)");
    return title;
}

}  // namespace

std::vector<FrameEffect> CompareRunFrames(const RunFrames& first, const RunFrames& second) {
    std::vector<FrameEffect> effects;
    const auto addKind = [&](StageFrameKind kind, const char* title) {
        const StageFrame* const a = FindKind(first, kind);
        const StageFrame* const b = FindKind(second, kind);
        if (a != nullptr && b != nullptr) effects.push_back(Compare(title, a->frame, b->frame));
    };
    addKind(StageFrameKind::Input, "input");
    addKind(StageFrameKind::Inverted, "inverted");
    const std::vector<const StageFrame*> a = AfterStages(first);
    const std::vector<const StageFrame*> b = AfterStages(second);
    const auto alike = [](size_t, size_t) { return size_t{0}; };
    for (const AlignedStage& pair : AlignStages(NumbersOf(first, a), NumbersOf(second, b), alike)) {
        if (!pair.first || !pair.second) continue;
        const StageFrame& one = *a[*pair.first];
        const StageFrame& other = *b[*pair.second];
        effects.push_back(
            Compare(TitleOf(first.stages[one.stage], second.stages[other.stage]), one.frame, other.frame));
    }
    addKind(StageFrameKind::Result, "result");
    return effects;
}

}  // namespace vastrelline
