// SPDX-License-Identifier: Apache-2.0
#include "commands/FrameInfo.h"

#include <cstdio>
#include <string_view>

#include "messages/Messages.h"

namespace vastrelline {
namespace {

constexpr int kSensorBits = 12;
constexpr int kByteBits = 8;
constexpr double kPercent = 100.0;

std::string Fixed(double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}

std::string Share(size_t count, const FrameInfo& info) {
    const double all = static_cast<double>(PixelCount(info.size.width, info.size.height));
    return Fixed(kPercent * static_cast<double>(count) / all, 2) + " % of the pixels";
}

std::vector<std::string> Advise(const FrameInfo& info) {
    const FrameStatistics& levels = info.levels;
    std::vector<std::string> advice;
    if (levels.least == levels.greatest)
        advice.push_back("all pixels are of level " + std::to_string(levels.least) +
                         ": there is nothing to see");
    if (info.sourceBits == kByteBits)
        advice.emplace_back(
            "8 bits a pixel are what viewers show, not what a sensor delivers: process the frame of 16 bits "
            "that "
            "this was made from");
    else if (levels.bitsUsed > kSensorBits && levels.bitsUsed - levels.emptyBits <= kSensorBits)
        advice.push_back("all levels are multiples of " +
                         std::to_string(1U << static_cast<unsigned>(levels.emptyBits)) +
                         ": they seem moved up by " + std::to_string(levels.emptyBits) +
                         " bits, and a profile for 12 bits takes them for brighter than they are");
    else if (levels.bitsUsed > kSensorBits)
        advice.push_back("the brightest level needs " + std::to_string(levels.bitsUsed) +
                         " bits: a profile with BITSTORED=12 expects 0 to 4095");
    return advice;
}

std::string NextCommand(const FrameInfo& info) {
    const std::string size = info.kind == FileKind::Raw && !FrameSizeInName(info.path)
                                 ? " --size " + FormatFrameSize(info.size)
                                 : std::string();
    return "vastrelline run " + ShellWord(info.path) + size +
           " --profile P.ini --section General --out picture.png";
}

std::string FormatCorners(const FrameInfo& info) {
    std::string text;
    for (size_t i = 0; i < kCorners.size(); ++i) {
        const FlatCorner& corner = info.corners[i];
        if (corner.width == 0) continue;
        text += (text.empty() ? "" : ", ") + std::string(CornerName(kCorners[i])) + " " +
                FormatFrameSize({corner.width, corner.height}) + " at level " + std::to_string(corner.level);
    }
    return text.empty() ? "none is flat" : text;
}

std::string FormatPercentiles(const FrameStatistics& levels) {
    std::string text;
    for (size_t i = 0; i < kPercentiles.size(); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(kPercentiles[i]) + " % " +
                std::to_string(levels.percentiles[i]);
    return text;
}

std::string FormatBits(const FrameInfo& info) {
    std::string text =
        std::to_string(info.sourceBits) + " a pixel, " + std::to_string(info.levels.bitsUsed) + " used";
    if (info.sourceBits == kByteBits) return text;
    return text +
           (info.levels.bitsUsed <= kSensorBits ? ": fits 12 bits (0 to 4095)" : ": more than 12 bits");
}

}  // namespace

FrameInfo DescribeLoadedFrame(const std::string& path, const LoadedFrame& loaded) {
    FrameInfo info;
    info.path = path;
    info.kind = loaded.kind;
    info.size = {loaded.frame.width, loaded.frame.height};
    info.sourceBits = loaded.sourceBits;
    info.levels = MeasureFrame(loaded.frame);
    for (size_t i = 0; i < kCorners.size(); ++i) info.corners[i] = FindFlatCorner(loaded.frame, kCorners[i]);
    info.notes = loaded.notes;
    info.advice = Advise(info);
    info.next = NextCommand(info);
    return info;
}

std::string FormatFrameInfo(const FrameInfo& info) {
    const FrameStatistics& levels = info.levels;
    std::string text = OneLine(info.path) + "\n";
    const auto add = [&text](const char* title, const std::string& line) {
        char padded[16];
        std::snprintf(padded, sizeof padded, "  %-12s", title);
        text += padded + OneLine(line) + "\n";
    };
    add("format", std::string(FileKindName(info.kind)));
    add("size", FormatFrameSize(info.size) + " pixels");
    add("bits", FormatBits(info));
    add("levels", std::to_string(levels.least) + " to " + std::to_string(levels.greatest) + ", mean " +
                      Fixed(levels.mean, 1) + ", " + std::to_string(levels.levels) + " different");
    add("percentiles", FormatPercentiles(levels));
    add("at 0", Share(levels.atZero, info));
    add(("at " + std::to_string(levels.greatest)).c_str(), Share(levels.atGreatest, info));
    add("corners", FormatCorners(info));
    for (const std::string& note : info.notes) add("note", note);
    for (const std::string& sentence : info.advice) add("mind", sentence);
    add("next", info.next);
    return text;
}

std::string ShellWord(const std::string& text) {
    constexpr std::string_view kHarmless =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./-+=:,@%";
    if (!text.empty() && text.find_first_not_of(kHarmless) == std::string::npos) return text;
    std::string word = "'";
    for (const char c : text) {
        if (c == '\'') word += "'\\'";
        word += c;
    }
    return word + "'";
}

}  // namespace vastrelline
