#include "runs/StageFrames.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>

#include "files/InputFile.h"
#include "formats/RawFormat.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMaxDumpBytes = uint64_t{1} << 30;
constexpr uint64_t kMaxCurveBytes = uint64_t{1} << 26;

// "03_clahe.raw" as 3 and "clahe.raw".
struct NumberedFile {
    int number = 0;
    std::string rest;  // in lower case
    std::string path;
};

std::string ToLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::optional<NumberedFile> ReadName(const fs::path& path) {
    const std::string leaf = path.filename().string();
    NumberedFile file;
    const auto [end, error] = std::from_chars(leaf.data(), leaf.data() + leaf.size(), file.number);
    const auto digits = static_cast<size_t>(end - leaf.data());
    if (error != std::errc() || digits < 2 || digits >= leaf.size() || leaf[digits] != '_')
        return std::nullopt;
    file.rest = ToLower(std::string_view(leaf).substr(digits + 1));
    file.path = path.string();
    return file;
}

std::vector<NumberedFile> ListFiles(const std::string& folder) {
    std::vector<NumberedFile> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        if (std::optional<NumberedFile> file = ReadName(entry.path())) files.push_back(std::move(*file));
    std::sort(files.begin(), files.end(), [](const NumberedFile& a, const NumberedFile& b) {
        return a.number != b.number ? a.number < b.number : a.rest < b.rest;
    });
    return files;
}

// Which name of a list such as "NN_Unsharp<mode>.raw" a file has.
std::optional<size_t> FindName(std::span<const std::string_view> names, const std::string& rest) {
    constexpr std::string_view kNumber = "NN_";
    for (size_t i = 0; i < names.size(); ++i) {
        if (!names[i].starts_with(kNumber)) continue;
        const std::string wanted = ToLower(names[i].substr(kNumber.size()));
        const size_t open = wanted.find('<');
        if (open == std::string::npos ? rest == wanted : rest.starts_with(wanted.substr(0, open))) return i;
    }
    return std::nullopt;
}

// Of a stage that the fixed chain has in two places, with a name for each: the name of this place.
std::span<const std::string_view> FixedDumpsOf(const PlannedPlace& place) {
    const std::span<const std::string_view> all = place.stage->fixedDumps;
    size_t count = 0;
    size_t own = 0;
    for (const FixedStep& step : FixedSteps()) {
        if (step.stage != place.stageNumber) continue;
        if (!place.keys.empty() && place.keys.front().name == step.switchKey) own = count;
        ++count;
    }
    return count > 1 && count == all.size() ? all.subspan(own, 1) : all;
}

// What a stage may dump; the last of it is its result.
std::span<const std::string_view> DumpsOf(const PlannedPlace& place) {
    if (place.stage == nullptr) return {};
    return place.role == PlaceRole::FixedStep ? FixedDumpsOf(place) : place.stage->dumps;
}

std::span<const std::string_view> CurvesOf(const PlannedPlace& place) {
    if (place.stage == nullptr) return {};
    return place.role == PlaceRole::FixedStep ? place.stage->fixedCurves : place.stage->curves;
}

// "level, tab, value" a line.
std::vector<uint16_t> ReadCurve(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMaxCurveBytes);
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::vector<uint16_t> curve;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const size_t tab = line.find('\t');
        if (tab == std::string_view::npos) continue;
        int64_t value = 0;
        const std::string_view digits = line.substr(line.find_first_not_of(" \t", tab));
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
        curve.push_back(static_cast<uint16_t>(value));
    }
    return curve;
}

Frame MapThrough(const Frame& frame, const std::vector<uint16_t>& curve) {
    Frame mapped = frame;
    for (uint16_t& pixel : mapped.pixels)
        if (!curve.empty()) pixel = curve[std::min<size_t>(pixel, curve.size() - 1)];
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
            const std::optional<size_t> name = FindName(DumpsOf(*stages_[stage].place), file.rest);
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
        return FindName(DumpsOf(*stages_[frames_.back().stage].place), file.rest);
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
            if (file.number != number || !FindName(CurvesOf(*stages_[stage].place), file.rest)) continue;
            Frame mapped = MapThrough(frames_.back().frame, ReadCurve(file.path));
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
    const std::vector<NumberedFile> files = ListFiles(folder);
    return FrameReader(size, stages, files).Read();
}

}  // namespace vastrelline
