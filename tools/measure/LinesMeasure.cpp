// SPDX-License-Identifier: Apache-2.0
#include "measure/LinesMeasure.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>

#include "measure/MeasuredArea.h"

namespace vastrelline {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr int32_t kLeastWidth = 32;
constexpr int32_t kLeastRows = 4;
constexpr double kSureVariance = 6.0;     // deviations of a row's variance
constexpr double kLeastVariance = 0.002;  // of the strongest row's: lines of a twentieth of its contrast
constexpr double kSureAmplitude = 6.0;
constexpr double kLeastCycles = 2.5;  // across the area; slower waves are shading
constexpr int kHalvings = 40;

double Level(const Frame& frame, int32_t x, int32_t y) {
    return frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
}

double VarianceOf(const std::vector<double>& values) {
    double sum = 0.0;
    double squares = 0.0;
    for (const double value : values) {
        sum += value - values.front();
        squares += (value - values.front()) * (value - values.front());
    }
    const auto count = static_cast<double>(values.size());
    return std::max(0.0, squares - sum * sum / count) / count;
}

// The mean of some rows.
std::vector<double> MeanRow(const Frame& frame, int32_t top, int32_t height) {
    std::vector<double> mean(static_cast<size_t>(frame.width));
    for (int32_t y = top; y < top + height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) mean[static_cast<size_t>(x)] += Level(frame, x, y) / height;
    return mean;
}

// Runs of rows whose variance is more than that of the plainest rows. Of rows that are all alike one run.
std::vector<MeasuredGroup> FindGroups(const Frame& frame) {
    std::vector<double> variances;
    variances.reserve(static_cast<size_t>(frame.height));
    for (int32_t y = 0; y < frame.height; ++y) variances.push_back(VarianceOf(MeanRow(frame, y, 1)));
    double least = *std::max_element(variances.begin(), variances.end());
    const double greatest = least;
    constexpr size_t kTogether = 3;
    for (size_t i = 0; i + kTogether <= variances.size(); ++i)
        least = std::min(least, (variances[i] + variances[i + 1] + variances[i + 2]) / kTogether);
    double limit = std::max(least * (1.0 + kSureVariance * std::sqrt(2.0 / frame.width)),
                            least + kLeastVariance * (greatest - least));
    if (greatest < 2.0 * least) limit = -1.0;
    std::vector<MeasuredGroup> groups;
    int32_t begin = 0;
    for (int32_t y = 0; y <= frame.height; ++y) {
        if (y < frame.height && variances[static_cast<size_t>(y)] > limit) continue;
        if (y - begin >= kLeastRows) {
            MeasuredGroup group;
            group.top = begin;
            group.height = y - begin;
            groups.push_back(group);
        }
        begin = y + 1;
    }
    return groups;
}

// A row under a window that leaves waves of other frequencies out.
class WindowedRow {
public:
    explicit WindowedRow(const std::vector<double>& row) {
        const auto count = static_cast<double>(row.size());
        double sum = 0.0;
        for (size_t i = 0; i < row.size(); ++i) {
            const double weight = 0.5 - 0.5 * std::cos(2.0 * kPi * (static_cast<double>(i) + 0.5) / count);
            weights_ += weight;
            sum += weight * row[i];
            levels_.push_back(weight);
        }
        mean_ = sum / weights_;
        for (size_t i = 0; i < row.size(); ++i) levels_[i] *= row[i] - mean_;
    }

    double Mean() const { return mean_; }

    double AmplitudeAt(double frequency) const {
        std::complex<double> sum;
        std::complex<double> wave(1.0, 0.0);
        const std::complex<double> turn = std::polar(1.0, -2.0 * kPi * frequency);
        for (const double level : levels_) {
            sum += level * wave;
            wave *= turn;
        }
        return 2.0 * std::abs(sum) / weights_;
    }

private:
    std::vector<double> levels_;
    double weights_ = 0.0;
    double mean_ = 0.0;
};

// The strongest wave; false if it is none that noise could not make.
bool FindWave(const Frame& frame, MeasuredGroup& group) {
    const int32_t border = group.height / 8;  // blur carries lines into plain rows, and back
    const std::vector<double> row = MeanRow(frame, group.top + border, group.height - 2 * border);
    const WindowedRow windowed(row);
    const double step = 0.5 / frame.width;
    double best = 0.0;
    double sum = 0.0;
    double count = 0.0;
    for (int32_t i = 0;; ++i) {
        const double frequency = kLeastCycles / frame.width + i * step;
        if (frequency >= 0.5) break;
        const double amplitude = windowed.AmplitudeAt(frequency);
        sum += amplitude;
        count += 1.0;
        if (amplitude <= best) continue;
        best = amplitude;
        group.frequency = frequency;
    }
    double low = group.frequency - step;
    double high = group.frequency + step;
    for (int i = 0; i < kHalvings; ++i) {  // the window's peak has one top
        const double third = (high - low) / 3.0;
        if (windowed.AmplitudeAt(low + third) < windowed.AmplitudeAt(high - third))
            low += third;
        else
            high -= third;
    }
    group.frequency = 0.5 * (low + high);
    group.amplitude = windowed.AmplitudeAt(group.frequency);
    group.mean = windowed.Mean();
    group.modulation = group.mean > 0.0 ? group.amplitude / group.mean : 0.0;
    // Few of the frequencies belong to the wave: their mean is that of what else is there.
    return group.amplitude > 0.0 && group.amplitude > kSureAmplitude * (sum - best) / count;
}

}  // namespace

LinesMeasure MeasureLines(const Frame& frame) {
    if (std::min(frame.width, frame.height) < kLeastRows || std::max(frame.width, frame.height) < kLeastWidth)
        throw CannotMeasure("an area of " + std::to_string(frame.width) + "x" + std::to_string(frame.height) +
                                " pixels is too small for lines",
                            "at least 32 pixels across the lines and 4 along them are needed");
    LinesMeasure measure;
    const Frame turned = Transpose(frame);
    measure.isLying =
        VarianceOf(MeanRow(turned, 0, turned.height)) > VarianceOf(MeanRow(frame, 0, frame.height));
    const Frame& upright = measure.isLying ? turned : frame;
    if (upright.width >= kLeastWidth)
        for (MeasuredGroup& group : FindGroups(upright))
            if (FindWave(upright, group)) measure.groups.push_back(group);
    if (measure.groups.empty())
        throw CannotMeasure("there are no lines", "--area names the part that has them");
    return measure;
}

}  // namespace vastrelline
