// SPDX-License-Identifier: Apache-2.0
#include "reports/LevelPlot.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <vector>

namespace vastrelline {
namespace {

constexpr size_t kBars = 128;
constexpr int32_t kWidth = 560;
constexpr int32_t kLeft = 10;
constexpr int32_t kRight = 550;
constexpr int32_t kTop = 30;
constexpr int32_t kBottom = 200;

uint16_t Brightest(const Frame& frame) {
    return frame.pixels.empty() ? uint16_t{0} : *std::max_element(frame.pixels.begin(), frame.pixels.end());
}

// Shares of the pixels, for frames of different sizes are looked at side by side.
std::vector<double> SharesOf(const Frame& frame, size_t levels) {
    std::vector<double> shares(kBars);
    for (const uint16_t level : frame.pixels) shares[level * kBars / levels] += 1.0;
    for (double& share : shares) share /= static_cast<double>(std::max<size_t>(1, frame.pixels.size()));
    return shares;
}

int32_t HeightOf(double share, double most) {
    return kBottom - static_cast<int32_t>(std::sqrt(share / most) * (kBottom - kTop));
}

void WriteSteps(std::ostream& out, const std::vector<double>& shares, double most) {
    out << 'M' << kLeft << ' ' << kBottom;
    for (size_t i = 0; i < kBars; ++i)
        out << 'V' << HeightOf(shares[i], most) << 'H'
            << kLeft + static_cast<int32_t>((i + 1) * (kRight - kLeft) / kBars);
    out << 'V' << kBottom;
}

}  // namespace

std::string LevelPlotMarkup(const Frame& first, const Frame& second) {
    constexpr int32_t kTicks = 4;
    const int32_t top = std::max(Brightest(first), Brightest(second));
    const size_t levels = static_cast<size_t>(top) + 1;
    const std::vector<double> one = SharesOf(first, levels);
    const std::vector<double> two = SharesOf(second, levels);
    const double most =
        std::max(*std::max_element(one.begin(), one.end()), *std::max_element(two.begin(), two.end()));
    std::ostringstream out;
    out << "<svg viewBox=\"0 0 " << kWidth << " 230\" role=\"img\" aria-label=\"Histograms of both frames\">"
        << "<path class=\"first-bars\" d=\"";
    WriteSteps(out, one, most > 0 ? most : 1.0);
    out << "Z\"/><path class=\"second-line\" d=\"";
    WriteSteps(out, two, most > 0 ? most : 1.0);
    out << "\"/><path class=\"axis\" d=\"M" << kLeft << ' ' << kBottom << 'H' << kRight << "\"/>";
    for (int32_t i = 0; i <= kTicks; ++i) {
        const char* const anchor = i == 0 ? "start" : i == kTicks ? "end" : "middle";
        out << "<text x=\"" << kLeft + i * (kRight - kLeft) / kTicks << "\" y=\"" << kBottom + 16
            << "\" text-anchor=\"" << anchor << "\">" << int64_t{top} * i / kTicks << "</text>";
    }
    out << "<rect class=\"first-key\" x=\"10\" y=\"6\" width=\"12\" height=\"12\"/><text x=\"27\" "
           "y=\"16\">A</text><rect class=\"second-key\" x=\"50\" y=\"10\" width=\"12\" height=\"3\"/>"
           "<text x=\"67\" y=\"16\">B</text></svg>";
    return out.str();
}

}  // namespace vastrelline
