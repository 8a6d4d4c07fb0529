// SPDX-License-Identifier: Apache-2.0
#include "measure/EdgeMeasure.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>

#include "measure/EdgeLine.h"
#include "measure/MeasuredArea.h"

namespace vastrelline {
namespace {

constexpr int32_t kLeastSide = 20;
constexpr int32_t kBinsPerPixel = 4;
constexpr int32_t kMostReach = 32;  // pixels to both sides of the edge
constexpr int32_t kLeastReach = 6;
constexpr int32_t kPoints = 200;  // of the modulation, up to one cycle per pixel
constexpr double kPi = 3.141592653589793;
constexpr double kTenth = 0.1;

double MeanOf(const std::vector<double>& values, size_t begin, size_t end) {
    double sum = 0.0;
    for (size_t i = begin; i < end; ++i) sum += values[i];
    return sum / static_cast<double>(end - begin);
}

// The edge's profile in bins of a quarter of a pixel, the line itself between the two middle ones.
std::vector<double> MakeProfile(const Frame& frame, const EdgeLine& line, int32_t reach) {
    const size_t bins = 2 * static_cast<size_t>(reach) * kBinsPerPixel;
    std::vector<double> sums(bins);
    std::vector<double> counts(bins);
    const double cosine = 1.0 / std::sqrt(1.0 + line.slope * line.slope);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) {
            const double distance = (x - line.At(y)) * cosine;
            const double bin = std::floor((distance + reach) * kBinsPerPixel);
            if (bin < 0.0 || bin >= static_cast<double>(bins)) continue;
            sums[static_cast<size_t>(bin)] +=
                frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
            counts[static_cast<size_t>(bin)] += 1.0;
        }
    for (size_t i = 0; i < bins; ++i) {
        if (counts[i] == 0.0)
            throw CannotMeasure(
                "the edge is too short for its angle: not every quarter of a pixel is met",
                "choose an area in which it is longer, or a frame where it stands at about 5 degrees");
        sums[i] /= counts[i];
    }
    return sums;
}

// The distance between a tenth and nine tenths of the step, around its middle.
double FindRise(const std::vector<double>& profile, double dark, double bright) {
    const auto share = [&](size_t i) { return (profile[i] - dark) / (bright - dark); };
    const size_t middle = profile.size() / 2;
    size_t low = middle;
    while (low > 0 && share(low) > kTenth) --low;
    size_t high = middle > 0 ? middle - 1 : 0;
    while (high + 1 < profile.size() && share(high) < 1.0 - kTenth) ++high;
    const double lowPlace = static_cast<double>(low) + (kTenth - share(low)) / (share(low + 1) - share(low));
    const double highPlace =
        static_cast<double>(high) - (share(high) - (1.0 - kTenth)) / (share(high) - share(high - 1));
    return (highPlace - lowPlace) / kBinsPerPixel;
}

double Sinc(double x) { return x == 0.0 ? 1.0 : std::sin(kPi * x) / (kPi * x); }

std::vector<ModulationPoint> MakeModulation(const std::vector<double>& profile) {
    std::vector<double> spread;
    const auto count = static_cast<double>(profile.size() - 1);
    for (size_t i = 0; i + 1 < profile.size(); ++i) {
        const double window = 0.54 - 0.46 * std::cos(2.0 * kPi * (static_cast<double>(i) + 0.5) / count);
        spread.push_back((profile[i + 1] - profile[i]) * window);
    }
    std::vector<ModulationPoint> points;
    double whole = 0.0;
    for (int32_t i = 0; i <= kPoints; ++i) {
        const double frequency = static_cast<double>(i) / kPoints;
        std::complex<double> sum;
        for (size_t k = 0; k < spread.size(); ++k)
            sum +=
                spread[k] * std::polar(1.0, -2.0 * kPi * frequency * static_cast<double>(k) / kBinsPerPixel);
        const double lost = Sinc(frequency / kBinsPerPixel);
        const double left = std::abs(sum) / (lost * lost);
        if (i == 0) whole = left;
        points.push_back({frequency, left / whole});
    }
    return points;
}

std::optional<double> FindHalf(const std::vector<ModulationPoint>& mtf) {
    for (size_t i = 1; i < mtf.size(); ++i) {
        if (mtf[i].modulation > 0.5) continue;
        const double part = (mtf[i - 1].modulation - 0.5) / (mtf[i - 1].modulation - mtf[i].modulation);
        return mtf[i - 1].frequency + part * (mtf[i].frequency - mtf[i - 1].frequency);
    }
    return std::nullopt;
}

// Around the means at both sides, where the profile is even.
double NoiseBeside(const Frame& frame, const EdgeLine& line, int32_t reach, double dark, double bright) {
    const double cosine = 1.0 / std::sqrt(1.0 + line.slope * line.slope);
    double squares = 0.0;
    double count = 0.0;
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) {
            const double distance = (x - line.At(y)) * cosine;
            if (std::fabs(distance) > reach || std::fabs(distance) < 0.5 * reach) continue;
            const double off = frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)] -
                               ((distance > 0.0) == line.isBrightRight ? bright : dark);
            squares += off * off;
            count += 1.0;
        }
    return std::sqrt(squares / count);
}

double ClippedShare(const Frame& frame) {
    const int32_t top = ClippingLevel(frame);
    const auto clipped = std::count_if(frame.pixels.begin(), frame.pixels.end(),
                                       [top](uint16_t level) { return level == 0 || level >= top; });
    return static_cast<double>(clipped) / static_cast<double>(frame.pixels.size());
}

}  // namespace

EdgeMeasure MeasureEdge(const Frame& frame) {
    if (std::min(frame.width, frame.height) < kLeastSide)
        throw CannotMeasure("an area of " + std::to_string(frame.width) + "x" + std::to_string(frame.height) +
                                " pixels is too small for an edge",
                            "at least 20x20 are needed");
    EdgeMeasure measure;
    measure.isLying = IsLyingEdge(frame);
    const Frame turned = measure.isLying ? Transpose(frame) : Frame{};
    const Frame& upright = measure.isLying ? turned : frame;
    const EdgeLine line = FindEdgeLine(upright);
    const auto room = static_cast<int32_t>(
        std::min({line.At(0), line.At(upright.height - 1), upright.width - 1 - line.At(0),
                  upright.width - 1 - line.At(upright.height - 1)}) /
        std::sqrt(1.0 + line.slope * line.slope));
    // An edge that leaves the area at its sides is met by fewer rows, which is still enough for the middle.
    const int32_t reach = std::clamp(room, kLeastReach, kMostReach);
    std::vector<double> profile = MakeProfile(upright, line, reach);
    if (!line.isBrightRight) std::reverse(profile.begin(), profile.end());
    const size_t part = profile.size() / 4;
    measure.darkLevel = MeanOf(profile, 0, part);
    measure.brightLevel = MeanOf(profile, profile.size() - part, profile.size());
    const double step = measure.brightLevel - measure.darkLevel;
    measure.noise = NoiseBeside(upright, line, reach, measure.darkLevel, measure.brightLevel);
    if (!(step > 0.0))
        throw CannotMeasure("there is no edge: both sides are of one level",
                            "--area names the part that has it");
    measure.angleDegrees = std::atan(line.slope) * 180.0 / kPi;
    measure.contrastToNoise = measure.noise > 0.0 ? step / measure.noise : 0.0;
    measure.risePixels = FindRise(profile, measure.darkLevel, measure.brightLevel);
    const auto [least, greatest] = std::minmax_element(profile.begin(), profile.end());
    measure.overshoot =
        std::max({0.0, (*greatest - measure.brightLevel) / step, (measure.darkLevel - *least) / step});
    for (size_t i = 0; i < profile.size(); ++i)
        measure.profile.push_back({(static_cast<double>(i) + 0.5) / kBinsPerPixel - reach, profile[i]});
    measure.mtf = MakeModulation(profile);
    measure.mtf50 = FindHalf(measure.mtf);
    measure.clippedShare = ClippedShare(frame);
    return measure;
}

}  // namespace vastrelline
