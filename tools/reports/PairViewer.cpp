// SPDX-License-Identifier: Apache-2.0
#include "reports/PairViewer.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "formats/PngFormat.h"
#include "frames/FrameDifference.h"
#include "frames/FrameStatistics.h"
#include "frames/GreyWindow.h"
#include "frames/LevelTop.h"
#include "messages/Markup.h"
#include "reports/Base64.h"
#include "reports/ReportAssets.h"
#include "reports/StillPicture.h"

namespace vastrelline {
namespace {

constexpr int32_t kStillBox = 480;
constexpr int32_t kTopLevel = 65535;

// low < high, whatever the levels are.
GreyWindow WindowOf(int32_t low, int32_t high) {
    if (high > low) return {low, high};
    return low < kTopLevel ? GreyWindow{low, low + 1} : GreyWindow{low - 1, low};
}

std::string WindowText(GreyWindow window, std::string_view between) {
    return std::to_string(window.low).append(between).append(std::to_string(window.high));
}

struct Windows {
    GreyWindow range;  // all levels of both frames
    GreyWindow most;   // without the darkest and the brightest hundredth
    GreyWindow bits;   // of the bits that are used
};

Windows WindowsOf(const ViewedPair& pair) {
    const FrameStatistics first = MeasureFrame(*pair.first);
    const FrameStatistics second = MeasureFrame(*pair.second);
    const uint16_t greatest = std::max(first.greatest, second.greatest);
    return {WindowOf(std::min(first.least, second.least), greatest),
            WindowOf(std::min(first.percentiles.front(), second.percentiles.front()),
                     std::max(first.percentiles.back(), second.percentiles.back())),
            {0, UsualTop(greatest)}};
}

std::string Figure(const StillPicture& picture, const std::string& words) {
    std::ostringstream out;
    const std::string escaped = EscapeMarkup(words);
    out << "<figure><img src=\"" << picture.source << "\" width=\"" << picture.width << "\" height=\""
        << picture.height << "\" alt=\"" << escaped << "\"><figcaption>" << escaped
        << "</figcaption></figure>\n";
    return out.str();
}

std::string Stills(const ViewedPair& pair, GreyWindow window, bool isOneSize) {
    const std::string through = ", levels " + WindowText(window, " to ");
    std::string markup =
        Figure(DrawStill(*pair.first, window, kStillBox), "A: " + pair.firstName + through) +
        Figure(DrawStill(*pair.second, window, kStillBox), "B: " + pair.secondName + through);
    if (!isOneSize || pair.largest == 0) return markup;
    return markup +
           Figure(DrawStillDifference(AbsoluteDifference(*pair.first, *pair.second), pair.largest, kStillBox),
                  "Difference: black is none, white one of " + std::to_string(pair.largest));
}

std::string Controls(const std::string& number) {
    constexpr std::string_view kMark = "@id@";
    std::string controls(ViewerControls());
    for (size_t at = controls.find(kMark); at != std::string::npos; at = controls.find(kMark, at))
        controls.replace(at, kMark.size(), number);
    return controls;
}

// What is no script to a browser is data, which no policy forbids.
void WriteData(std::ostream& out, const Frame& frame) {
    out << "<script type=\"text/plain\" class=\"frame\">" << EncodeBase64(EncodePng16(frame))
        << "</script>\n";
}

}  // namespace

std::string PairViewerMarkup(const ViewedPair& pair) {
    const bool isOneSize =
        pair.first->width == pair.second->width && pair.first->height == pair.second->height;
    const Windows windows = WindowsOf(pair);
    std::ostringstream out;
    if (!pair.isLive) {
        out << "<div class=\"still\">\n" << Stills(pair, windows.range, isOneSize) << "</div>\n";
        return out.str();
    }
    out << "<div class=\"viewer\" id=\"viewer-" << pair.number << "\" data-first=\""
        << EscapeMarkup("A: " + pair.firstName) << "\" data-second=\""
        << EscapeMarkup("B: " + pair.secondName) << "\" data-top=\"" << windows.bits.high
        << "\" data-largest=\"" << pair.largest << "\" data-windows=\"" << WindowText(windows.range, ":")
        << "=range of the frames;" << WindowText(windows.most, ":") << "=middle 98 %;"
        << WindowText(windows.bits, ":") << "=all levels\">\n<div class=\"still\">\n"
        << Stills(pair, windows.range, isOneSize) << "</div>" << Controls(std::to_string(pair.number));
    WriteData(out, *pair.first);
    WriteData(out, *pair.second);
    out << "</div>\n";
    return out.str();
}

}  // namespace vastrelline
