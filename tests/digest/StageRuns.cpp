// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <string_view>
#include <utility>

#include "RunGroups.h"
#include "RunParts.h"

namespace vastrelline::digest {

namespace {

constexpr int32_t kHdr = 13;
constexpr int32_t kGamma = 10;
constexpr size_t kDrawsPerMode = 10;

// Makes the runs of one stage, each in its turn another frame and other surroundings.
class StageRunMaker {
public:
    explicit StageRunMaker(const StageValues& stage) : stage_(stage) {}

    // Runs the stage with the given lines of its keys.
    template <typename AddKeys>
    void Add(const FrameRecipe& frame, const AddKeys& addKeys) {
        DigestRun run;
        run.frame = frame;
        ProfileLines lines;
        AddSensorSection(lines);
        const bool isCorners = frame.kind == FrameKind::Corners;
        if (stage_.number == 0) {
            if (turn_ % 4 == 3) run.function = ExportedFunction::Cr;
            BeginSection(lines, 1);
            lines.Key("INTRAORAL_MASK", isCorners ? "1" : "0")
                .Key("INVERSE_INTENSITY", turn_ % 3 == 2 ? "0" : "1");
            for (const std::string_view key : ListOf(stage_.enable)) lines.Key(key, "1");
            addKeys(lines);
        } else {
            // Only a run that decides about the exposure gives a frame that HDR has changed.
            if (stage_.number == kHdr) run.function = ExportedFunction::S;
            BeginSection(lines, stage_.number == kHdr ? 3 : 2);
            lines.Key("SETCLIPBIN", "1").Key("INTRAORAL_MASK", isCorners ? "1" : "0");
            lines.Key("INVERSE_INTENSITY", turn_ % 3 == 2 ? "1" : "0");
            AddDepth(lines);
            lines.Stage(stage_.number);
            addKeys(lines);
            lines.Count();
        }
        run.profile = lines.Text();
        runs_.push_back(std::move(run));
        ++turn_;
    }

    void AddOne(const FrameRecipe& frame, std::string_view mode, std::string_view key,
                std::string_view value) {
        Add(frame, [&](ProfileLines& lines) {
            if (!mode.empty()) AddStageKey(lines, stage_, stage_.mode.key, mode);
            if (!key.empty()) AddStageKey(lines, stage_, key, value);
        });
    }

    size_t Turn() const { return turn_; }
    DigestRuns Take() { return std::move(runs_); }

private:
    // Frames arrive with 12 bits. A straight curve before the stage spreads some of them over 16, for what
    // runs in the wide forms of kernels.
    void AddDepth(ProfileLines& lines) const {
        if (turn_ % 5 != 4) return;
        lines.Key("BITSTORED", "16").Key("OUTPUTRANGE", "65535");
        lines.Stage(kGamma).StageKey("POST_GAMMA_RATIO", "1");
    }

    const StageValues& stage_;
    DigestRuns runs_;
    size_t turn_ = 0;
};

}  // namespace

DigestRuns StageRuns(const StageValues& stage) {
    constexpr size_t kFrameKinds = 17;
    StageRunMaker maker(stage);
    Generator generator(stage.group);
    std::vector<std::string_view> modes = ListOf(stage.mode.ordinary);
    if (modes.empty()) modes.emplace_back();
    for (const std::string_view mode : modes) {
        for (size_t i = 0; i < kFrameKinds; ++i) maker.AddOne(AnyFrame(i), mode, {}, {});
        for (const KeyValues& values : stage.keys)
            for (const std::string_view value : ListOf(values.ordinary))
                maker.AddOne(PictureFrame(maker.Turn()), mode, values.key, value);
        for (size_t i = 0; i < kDrawsPerMode; ++i)
            maker.Add(AnyFrame(maker.Turn()), [&](ProfileLines& lines) {
                if (!mode.empty()) AddStageKey(lines, stage, stage.mode.key, mode);
                for (const KeyValues& values : stage.keys)
                    AddStageKey(lines, stage, values.key, DrawValue(generator, values, i % 3 == 2));
            });
    }
    for (const std::string_view value : ListOf(stage.mode.odd))
        maker.AddOne(PictureFrame(maker.Turn()), value, {}, {});
    for (const KeyValues& values : stage.keys)
        for (const std::string_view value : ListOf(values.odd))
            maker.AddOne(AnyFrame(maker.Turn()), modes[maker.Turn() % modes.size()], values.key, value);
    return maker.Take();
}

}  // namespace vastrelline::digest
