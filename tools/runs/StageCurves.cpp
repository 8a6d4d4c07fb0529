// SPDX-License-Identifier: Apache-2.0
#include "runs/StageCurves.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/PathText.h"
#include "runs/DumpNames.h"

namespace vastrelline {
namespace {

constexpr std::string_view kNumber = "NN_";

bool IsLastOfItsKind(const std::vector<RanStage>& stages, size_t stage) {
    return std::none_of(
        stages.begin() + static_cast<std::ptrdiff_t>(stage) + 1, stages.end(),
        [&](const RanStage& later) { return later.place->stageNumber == stages[stage].place->stageNumber; });
}

std::string FindNumberedCurve(const std::string& folder, const PlannedPlace& place, const std::string& dump) {
    const std::optional<NumberedFile> own = ReadNumberedName(dump);
    if (!own) return {};
    for (const NumberedFile& file : ListNumberedFiles(folder))
        if (file.number == own->number && FindDumpName(CurvesOf(place), file.rest)) return file.path;
    return {};
}

// Names with a part that varies, such as a band's number, are of something else than the whole frame.
std::string FindPlainCurve(const std::string& folder, const PlannedPlace& place) {
    for (const std::string_view name : CurvesOf(place)) {
        if (name.starts_with(kNumber) || name.find('<') != std::string_view::npos) continue;
        const std::filesystem::path path = PathOf(folder) / PathOf(name);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(path, ignored)) return path.string();
    }
    return {};
}

}  // namespace

std::optional<std::vector<CurvePoint>> FindStageCurve(const std::string& folder,
                                                      const std::vector<RanStage>& stages,
                                                      const StageFrame& step) {
    const PlannedPlace& place = *stages[step.stage].place;
    std::string path = FindNumberedCurve(folder, place, step.file);
    if (path.empty() && IsLastOfItsKind(stages, step.stage)) path = FindPlainCurve(folder, place);
    if (path.empty()) return std::nullopt;
    return ReadCurveFile(path);
}

}  // namespace vastrelline
