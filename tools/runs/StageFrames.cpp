// SPDX-License-Identifier: Apache-2.0
#include "runs/StageFrames.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "files/InputFile.h"
#include "formats/RawFormat.h"
#include "messages/ToolError.h"
#include "platform/OwnProcess.h"
#include "runs/CurveFile.h"
#include "runs/DumpNames.h"

namespace vastrelline {
namespace {

constexpr uint64_t kMaxDumpBytes = uint64_t{1} << 30;

Frame MapThrough(const Frame& frame, const std::vector<CurvePoint>& curve) {
    Frame mapped = frame;
    for (uint16_t& pixel : mapped.pixels)
        if (!curve.empty())
            pixel = static_cast<uint16_t>(curve[std::min<size_t>(pixel, curve.size() - 1)].value);
    return mapped;
}

// Walks through the dumps and the stages of a run, both in its order.
class FrameReader {
public:
    FrameReader(FrameSize size, const std::vector<RanStage>& stages, const std::vector<NumberedFile>& files)
        : size_(size), stages_(stages), files_(files) {}

    std::vector<StageFrame> Read() {
        for (const NumberedFile& file : files_)
            if (file.rest.ends_with(".raw")) ReadDump(file);
        return std::move(frames_);
    }

private:
    void ReadDump(const NumberedFile& file) {
        if (InputFileSize(file.path) != 2 * PixelCount(size_.width, size_.height)) return;
        if (file.rest == "originalimage.raw") return Add(StageFrameKind::Input, 0, file);
        if (file.rest == "originalimage_invert.raw") return Add(StageFrameKind::Inverted, 0, file);
        if (file.rest == "result.raw") {
            AddMapped(stages_.size(), file.number);
            return Add(StageFrameKind::Result, 0, file);
        }
        if (IsOfStageBefore(file)) return AddToStageBefore(file);
        for (size_t stage = next_; stage < stages_.size(); ++stage) {
            const std::optional<size_t> name = FindDumpName(DumpsOf(*stages_[stage].place), file.rest);
            if (!name) continue;
            AddMapped(stage, file.number);
            next_ = stage + 1;
            names_ = {*name};
            return Add(StageFrameKind::AfterStage, stage, file);
        }
    }

    // One more dump of the stage that has the last frame. A name that this stage has had already, with
    // whatever mode in it, is that of the next stage of its kind.
    bool IsOfStageBefore(const NumberedFile& file) const {
        const std::optional<size_t> name = FindNameBefore(file);
        return name && std::find(names_.begin(), names_.end(), *name) == names_.end();
    }

    std::optional<size_t> FindNameBefore(const NumberedFile& file) const {
        if (frames_.empty() || frames_.back().kind != StageFrameKind::AfterStage) return std::nullopt;
        return FindDumpName(DumpsOf(*stages_[frames_.back().stage].place), file.rest);
    }

    // What a stage shows beside its result has the same number, so that the order of the files does not tell
    // which is which.
    void AddToStageBefore(const NumberedFile& file) {
        const size_t name = *FindNameBefore(file);
        const bool isLater = name > *std::max_element(names_.begin(), names_.end());
        names_.push_back(name);
        if (!isLater) return;
        const size_t stage = frames_.back().stage;
        frames_.pop_back();
        Add(StageFrameKind::AfterStage, stage, file);
    }

    // The frame of a stage before `end` that writes a curve only: it carries the number of the next dump.
    // Where several of them follow each other, the curves of one number have written over each other.
    void AddMapped(size_t end, int number) {
        const auto hasCurveOnly = [](const RanStage& stage) {
            return DumpsOf(*stage.place).empty() && !CurvesOf(*stage.place).empty();
        };
        const auto begin = stages_.begin() + static_cast<std::ptrdiff_t>(std::min(next_, end));
        const auto stop = stages_.begin() + static_cast<std::ptrdiff_t>(end);
        if (!frames_.empty() && std::count_if(begin, stop, hasCurveOnly) == 1)
            AddThroughCurve(static_cast<size_t>(std::find_if(begin, stop, hasCurveOnly) - stages_.begin()),
                            number);
        next_ = std::max(next_, end);
    }

    void AddThroughCurve(size_t stage, int number) {
        for (const NumberedFile& file : files_) {
            if (file.number != number || !FindDumpName(CurvesOf(*stages_[stage].place), file.rest)) continue;
            Frame mapped = MapThrough(frames_.back().frame, ReadCurveFile(file.path));
            frames_.push_back({StageFrameKind::AfterStage, stage, file.path, std::move(mapped)});
            return;
        }
    }

    void Add(StageFrameKind kind, size_t stage, const NumberedFile& file) {
        frames_.push_back(
            {kind, stage, file.path, DecodeRaw(ReadInputFile(file.path, kMaxDumpBytes), size_)});
    }

    FrameSize size_;
    const std::vector<RanStage>& stages_;
    const std::vector<NumberedFile>& files_;
    std::vector<StageFrame> frames_;
    size_t next_ = 0;            // the first stage that has no frame yet
    std::vector<size_t> names_;  // which of its stage's names the dumps of the last frame have had
};

}  // namespace

std::vector<StageFrame> ReadStageFrames(const std::string& folder, FrameSize size,
                                        const std::vector<RanStage>& stages) {
    const std::vector<NumberedFile> files = ListNumberedFiles(folder);
    return FrameReader(size, stages, files).Read();
}

std::vector<StageFrame> RequireStageFrames(const std::string& folder, FrameSize size,
                                           const std::vector<RanStage>& stages) {
    std::vector<StageFrame> frames = ReadStageFrames(folder, size, stages);
    if (frames.empty())
        throw OutputError(folder, "has no dumps of the run; the library cuts the names of long folders",
                          kTemporaryFolderHint);
    return frames;
}

}  // namespace vastrelline
