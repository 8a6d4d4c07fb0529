// SPDX-License-Identifier: Apache-2.0
#include "pictures/CurveSvg.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>

namespace vastrelline {
namespace {

constexpr int64_t kWidth = 1440;
constexpr int64_t kHeight = 900;
constexpr int64_t kLeft = 130;
constexpr int64_t kRight = 1400;
constexpr int64_t kTop = 80;
constexpr int64_t kBottom = 790;
constexpr int64_t kMostBars = 254;  // some five units wide each
constexpr int64_t kTicks = 6;

constexpr std::string_view kHead =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1440 900\" width=\"720\" height=\"450\" "
    "font-family=\"sans-serif\" font-size=\"26\">\n"
    "<rect width=\"1440\" height=\"900\" fill=\"white\"/>\n";

// From `least` to `greatest`, which is larger.
struct Range {
    int64_t least;
    int64_t greatest;

    int64_t Width() const { return greatest - least; }
    void Include(int64_t level) {
        least = std::min(least, level);
        greatest = std::max(greatest, level);
    }
};

Range Widened(Range range) {
    if (range.Width() == 0) ++range.greatest;
    return range;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<')
            escaped += "&lt;";
        else if (c == '&')
            escaped += "&amp;";
        else
            escaped += c;
    }
    return escaped;
}

class Plot {
public:
    Plot(Range levels, Range values) : levels_(levels), values_(values) {}

    int64_t X(int64_t level) const {
        return kLeft + (level - levels_.least) * (kRight - kLeft) / levels_.Width();
    }
    int64_t Y(int64_t value) const {
        return kBottom - (value - values_.least) * (kBottom - kTop) / values_.Width();
    }

    std::string Bars(const LevelCounts& histogram) const {
        const int64_t count = std::min(kMostBars, levels_.Width() + 1);
        std::vector<size_t> bars(static_cast<size_t>(count));
        for (size_t i = 0; i < histogram.counts.size(); ++i) {
            const int64_t level = histogram.first + static_cast<int64_t>(i) - levels_.least;
            bars[static_cast<size_t>(level * count / (levels_.Width() + 1))] += histogram.counts[i];
        }
        const size_t highest = std::max<size_t>(1, *std::max_element(bars.begin(), bars.end()));
        std::ostringstream text;
        text << "<path fill=\"#d5dbe3\" d=\"M" << kLeft << ' ' << kBottom;
        for (size_t i = 0; i < bars.size(); ++i) {
            const double share = std::sqrt(static_cast<double>(bars[i]) / static_cast<double>(highest));
            text << 'V' << kBottom - static_cast<int64_t>(share * static_cast<double>(kBottom - kTop)) << 'H'
                 << kLeft + (static_cast<int64_t>(i) + 1) * (kRight - kLeft) / count;
        }
        text << 'V' << kBottom << "Z\"/>\n";
        return text.str();
    }

    std::string Axes() const {
        std::ostringstream text;
        text << "<path fill=\"none\" stroke=\"#808080\" stroke-width=\"2\" d=\"M" << kLeft << ' ' << kTop
             << 'V' << kBottom << 'H' << kRight << "\"/>\n";
        for (const int64_t level : Ticks(levels_))
            text << "<text x=\"" << X(level) << "\" y=\"" << kBottom + 36 << "\" text-anchor=\"middle\">"
                 << level << "</text>\n";
        for (const int64_t value : Ticks(values_))
            text << "<text x=\"" << kLeft - 12 << "\" y=\"" << Y(value) + 9 << "\" text-anchor=\"end\">"
                 << value << "</text>\n";
        text << "<text x=\"" << (kLeft + kRight) / 2 << "\" y=\"" << kHeight - 24
             << "\" text-anchor=\"middle\">level before; grey: how many pixels have it (square "
                "root)</text>\n";
        return text.str();
    }

    // The levels that stay as they are, as far as both ranges hold them.
    std::string Unchanged() const {
        const int64_t from = std::max(levels_.least, values_.least);
        const int64_t to = std::min(levels_.greatest, values_.greatest);
        if (from >= to) return {};
        std::ostringstream text;
        text << "<path stroke=\"#909090\" stroke-width=\"2\" stroke-dasharray=\"10 8\" d=\"M" << X(from)
             << ' ' << Y(from) << 'L' << X(to) << ' ' << Y(to) << "\"/>\n";
        return text.str();
    }

    std::string Curve(const std::vector<CurvePoint>& points) const {
        std::ostringstream text;
        text << "<path fill=\"none\" stroke=\"#b3261e\" stroke-width=\"4\" d=\"";
        char step = 'M';
        for (const CurvePoint& point : points) {
            text << step << X(point.level) << ' ' << Y(point.value);
            step = 'L';
        }
        text << "\"/>\n";
        return text.str();
    }

private:
    // Multiples of 1, 2 or 5 times a power of ten.
    static std::vector<int64_t> Ticks(Range range) {
        int64_t distance = 1;
        for (int64_t power = 1; range.Width() / distance > kTicks; power *= 10)
            for (const int64_t factor : {1, 2, 5})
                if (range.Width() / distance > kTicks) distance = factor * power;
        std::vector<int64_t> ticks;
        // Division rounds toward zero: from one below on, all that lie in the range are met.
        for (int64_t tick = (range.least / distance - 1) * distance; tick <= range.greatest; tick += distance)
            if (tick >= range.least) ticks.push_back(tick);
        return ticks;
    }

    Range levels_;
    Range values_;
};

}  // namespace

std::string DrawCurveSvg(const std::string& title, const LevelCounts& histogram,
                         const std::vector<CurvePoint>& points) {
    Range levels{points.front().level, points.front().level};
    Range values{points.front().value, points.front().value};
    for (const CurvePoint& point : points) {
        levels.Include(point.level);
        values.Include(point.value);
    }
    if (!histogram.counts.empty()) {
        levels.Include(histogram.first);
        levels.Include(histogram.first + static_cast<int64_t>(histogram.counts.size()) - 1);
    }
    const Plot plot(Widened(levels), Widened(values));
    std::ostringstream svg;
    svg << kHead << "<title>" << Escaped(title) << "</title>\n"
        << plot.Bars(histogram) << plot.Unchanged() << plot.Curve(points) << plot.Axes() << "<text x=\""
        << kWidth / 2 << "\" y=\"48\" text-anchor=\"middle\" font-size=\"32\">" << Escaped(title)
        << "</text>\n</svg>\n";
    return svg.str();
}

}  // namespace vastrelline
