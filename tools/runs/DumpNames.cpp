// SPDX-License-Identifier: Apache-2.0
#include "runs/DumpNames.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/PathText.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

std::string ToLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
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

}  // namespace

std::optional<NumberedFile> ReadNumberedName(const std::string& path) {
    const std::string leaf = PathOf(path).filename().string();
    NumberedFile file;
    const auto [end, error] = std::from_chars(leaf.data(), leaf.data() + leaf.size(), file.number);
    const auto digits = static_cast<size_t>(end - leaf.data());
    if (error != std::errc() || digits < 2 || digits >= leaf.size() || leaf[digits] != '_')
        return std::nullopt;
    file.rest = ToLower(std::string_view(leaf).substr(digits + 1));
    file.path = path;
    return file;
}

std::vector<NumberedFile> ListNumberedFiles(const std::string& folder) {
    std::vector<NumberedFile> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(PathOf(folder), error))
        if (std::optional<NumberedFile> file = ReadNumberedName(entry.path().string()))
            files.push_back(std::move(*file));
    std::sort(files.begin(), files.end(), [](const NumberedFile& a, const NumberedFile& b) {
        return a.number != b.number ? a.number < b.number : a.rest < b.rest;
    });
    return files;
}

std::optional<size_t> FindDumpName(std::span<const std::string_view> names, const std::string& rest) {
    constexpr std::string_view kNumber = "NN_";
    for (size_t i = 0; i < names.size(); ++i) {
        if (!names[i].starts_with(kNumber)) continue;
        const std::string wanted = ToLower(names[i].substr(kNumber.size()));
        const size_t open = wanted.find('<');
        if (open == std::string::npos ? rest == wanted : rest.starts_with(wanted.substr(0, open))) return i;
    }
    return std::nullopt;
}

std::span<const std::string_view> DumpsOf(const PlannedPlace& place) {
    if (place.stage == nullptr) return {};
    return place.role == PlaceRole::FixedStep ? FixedDumpsOf(place) : place.stage->dumps;
}

std::span<const std::string_view> CurvesOf(const PlannedPlace& place) {
    if (place.stage == nullptr) return {};
    return place.role == PlaceRole::FixedStep ? place.stage->fixedCurves : place.stage->curves;
}

}  // namespace vastrelline
