// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomFrame.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "phantom/ExactExp.h"
#include "phantom/PhantomJaw.h"
#include "phantom/PhantomRandom.h"
#include "phantom/PhantomTeeth.h"

namespace vastrelline {
namespace {

constexpr double kSceneWidthMm = 26.0;
constexpr double kSceneHeightMm = 33.36;

// Linear attenuation per mm for the mean energy of a dental tube at 60 to 70 kV behind its filter, about
// 40 keV.
constexpr double kEnamel = 0.26;
constexpr double kDentine = 0.155;
constexpr double kCompactBone = 0.125;
constexpr double kSpongyBone = 0.055;  // with its marrow
constexpr double kSoftTissue = 0.027;  // also pulp

constexpr double kOpenBeamLevel = 4200.0;      // at dose 1, without anything in the way
constexpr double kPhotonsPerSquareMm = 5.0e7;  // that count at dose 1
constexpr double kReadNoiseLevels = 2.0;
constexpr double kSpreadMm = 0.032;  // sigma of the point spread: about 8 line pairs per mm
constexpr double kReachInSigmas = 3.0;
constexpr int32_t kCornerRadius = 150;  // in pixels

// The share of the radiation that gets through, for every pixel.
std::vector<float> MakeTransmission(FrameSize size, double pitchMm, uint64_t seed) {
    const PhantomTeeth teeth(seed);
    const double left = (kSceneWidthMm - size.width * pitchMm) / 2.0;
    const double top = (kSceneHeightMm - size.height * pitchMm) / 2.0;
    std::vector<float> transmission;
    transmission.reserve(PixelCount(size.width, size.height));
    for (int32_t row = 0; row < size.height; ++row) {
        const double y = top + (row + 0.5) * pitchMm;
        for (int32_t column = 0; column < size.width; ++column) {
            const double x = left + (column + 0.5) * pitchMm;
            const ToothRay tooth = teeth.RayAt(x, y);
            const JawRay jaw = JawRayAt(seed, tooth, x, y);
            const double weakening = kEnamel * tooth.enamel + kDentine * tooth.dentine +
                                     kCompactBone * jaw.compactBone + kSpongyBone * jaw.spongyBone +
                                     kSoftTissue * jaw.softTissue;
            transmission.push_back(static_cast<float>(ExactExp(-weakening)));
        }
    }
    return transmission;
}

std::vector<double> MakeSpread(double sigmaPixels) {
    const auto reach = static_cast<int32_t>(std::ceil(kReachInSigmas * sigmaPixels));
    std::vector<double> taps;
    double sum = 0.0;
    for (int32_t i = -reach; i <= reach; ++i) {
        taps.push_back(ExactExp(-0.5 * i * i / (sigmaPixels * sigmaPixels)));
        sum += taps.back();
    }
    for (double& tap : taps) tap /= sum;
    return taps;
}

// Convolves lines of pixels that lie `step` apart; the nearest edge pixel is repeated.
void SpreadLine(float* line, int32_t count, size_t step, const std::vector<double>& taps,
                std::vector<double>& padded) {
    const size_t reach = taps.size() / 2;
    const auto length = static_cast<size_t>(count);
    padded.resize(length + 2 * reach);
    for (size_t i = 0; i < padded.size(); ++i)
        padded[i] = double{line[step * std::min(i < reach ? 0 : i - reach, length - 1)]};
    for (size_t i = 0; i < length; ++i) {
        double sum = 0.0;
        for (size_t k = 0; k < taps.size(); ++k) sum += taps[k] * padded[i + k];
        line[step * i] = static_cast<float>(sum);
    }
}

void Spread(std::vector<float>& image, FrameSize size, double sigmaPixels) {
    const std::vector<double> taps = MakeSpread(sigmaPixels);
    std::vector<double> padded;
    const auto width = static_cast<size_t>(size.width);
    for (int32_t y = 0; y < size.height; ++y)
        SpreadLine(image.data() + static_cast<size_t>(y) * width, size.width, 1, taps, padded);
    for (int32_t x = 0; x < size.width; ++x) SpreadLine(image.data() + x, size.height, width, taps, padded);
}

// Counts the photons of each pixel, adds the noise of the electronics and makes grey levels of it.
Frame Expose(const std::vector<float>& transmission, FrameSize size, double photons, double dose,
             uint64_t seed) {
    PhantomRandom random(StirBits(seed, 2, 0));
    const double levelsPerPhoton = kOpenBeamLevel * dose / photons;
    Frame frame{size.width, size.height, {}};
    frame.pixels.reserve(transmission.size());
    for (const float share : transmission) {
        const double counted = random.Poisson(photons * double{share});
        const double level = counted * levelsPerPhoton + kReadNoiseLevels * random.Normal();
        frame.pixels.push_back(static_cast<uint16_t>(std::clamp(level + 0.5, 0.0, double{kPhantomTopLevel})));
    }
    return frame;
}

void CutCorners(Frame& frame) {
    const int32_t radius = std::min({kCornerRadius, frame.width / 2, frame.height / 2});
    const int64_t limit = int64_t{4} * radius * radius;  // distances are doubled, so that they stay whole
    for (int32_t up = 0; up < radius; ++up) {
        uint16_t* const row = frame.pixels.data() + PixelCount(frame.width, frame.height - 1 - up);
        const int64_t down = 2 * (radius - up) - 1;
        for (int32_t x = 0; x < radius; ++x) {
            const int64_t out = 2 * (radius - x) - 1;
            if (out * out + down * down <= limit) break;
            row[x] = 0;
            row[frame.width - 1 - x] = 0;
        }
    }
}

}  // namespace

Frame MakePhantomFrame(FrameSize size, double dose, uint64_t seed) {
    const double pitchMm = std::min(kSceneWidthMm / size.width, kSceneHeightMm / size.height);
    std::vector<float> transmission = MakeTransmission(size, pitchMm, seed);
    Spread(transmission, size, kSpreadMm / pitchMm);
    Frame frame = Expose(transmission, size, kPhotonsPerSquareMm * pitchMm * pitchMm * dose, dose, seed);
    CutCorners(frame);
    return frame;
}

}  // namespace vastrelline
