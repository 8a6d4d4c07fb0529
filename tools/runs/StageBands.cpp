// SPDX-License-Identifier: Apache-2.0
#include "runs/StageBands.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/InputFile.h"
#include "formats/RawFormat.h"
#include "frames/FrameSize.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMaxDumpBytes = uint64_t{1} << 30;
constexpr std::string_view kBefore = "laplacian";
constexpr std::string_view kAfter = "enhancedlaplacian";

// The library writes the names of dumps in small letters; whatever their case, they are the same.
std::string ToLower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// "laplacian2_328x420.raw" as 2 for the word "laplacian"; nothing for other names.
std::optional<int32_t> BandOf(std::string_view leaf, std::string_view word) {
    if (!leaf.starts_with(word) || !leaf.ends_with(".raw")) return std::nullopt;
    leaf.remove_prefix(word.size());
    int32_t band = 0;
    const auto [end, error] = std::from_chars(leaf.data(), leaf.data() + leaf.size(), band);
    const bool isWhole = error == std::errc() && leaf[static_cast<size_t>(end - leaf.data())] == '_';
    return isWhole ? std::optional(band) : std::nullopt;
}

// A dump of 16 bits whose size its name tells.
std::optional<SignedFrame> ReadSigned(const fs::path& path) {
    const std::optional<FrameSize> size = FrameSizeInName(path.string());
    if (!size || InputFileSize(path.string()) != RawByteCount(*size)) return std::nullopt;
    const Frame frame = DecodeRaw(ReadInputFile(path.string(), kMaxDumpBytes), *size);
    SignedFrame band{size->width, size->height, {}};
    for (const uint16_t level : frame.pixels) band.levels.push_back(static_cast<int16_t>(level));
    return band;
}

StageBand& BandNumbered(std::vector<StageBand>& bands, int32_t number) {
    const auto found = std::find_if(bands.begin(), bands.end(),
                                    [&](const StageBand& band) { return band.number == number; });
    if (found != bands.end()) return *found;
    bands.push_back({number, {}, {}, {}});
    return bands.back();
}

}  // namespace

std::vector<StageBand> ReadStageBands(const std::string& folder) {
    std::vector<StageBand> bands;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(PathOf(folder), error)) {
        const std::string leaf = ToLower(entry.path().filename().string());
        const bool isAfter = leaf.starts_with(kAfter);
        const std::optional<int32_t> number = BandOf(leaf, isAfter ? kAfter : kBefore);
        if (!number) continue;
        if (std::optional<SignedFrame> frame = ReadSigned(entry.path())) {
            StageBand& band = BandNumbered(bands, *number);
            (isAfter ? band.after : band.before) = *std::move(frame);
        }
    }
    std::erase_if(bands, [](const StageBand& band) {
        return band.before.levels.empty() || band.before.levels.size() != band.after.levels.size();
    });
    std::sort(bands.begin(), bands.end(),
              [](const StageBand& a, const StageBand& b) { return a.number < b.number; });
    for (StageBand& band : bands) {
        const fs::path path =
            PathOf(folder) / PathOf("EnhancedSlope_" + std::to_string(band.number) + ".txt");
        if (fs::is_regular_file(path, error)) band.curve = ReadCurveFile(path.string());
    }
    return bands;
}

}  // namespace vastrelline
