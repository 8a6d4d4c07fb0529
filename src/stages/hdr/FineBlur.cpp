// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FineBlur.h"

#include <cmath>
#include <cstddef>

#include "elementary/Exponential.h"
#include "stages/hdr/BlurStep.h"

namespace vastrelline {

namespace {

// So far the fine surface is followed: 1e-9 of it lie beyond, below what single precision can tell.
constexpr double kReachInSigmas = 6;

}  // namespace

FineBlur::FineBlur(const FrameView<const uint16_t>& image, int32_t smallest, double sigma, double weight,
                   const FusionKernels& kernels)
    : image_(image),
      smallest_(smallest),
      kernels_(kernels),
      pairs_(static_cast<int32_t>(std::ceil(kReachInSigmas * sigma))),
      line_(static_cast<size_t>(image.Width() + 2 * pairs_)),
      kept_(static_cast<size_t>(2 * pairs_) * static_cast<size_t>(image.Width())),
      seen_(static_cast<size_t>(2 * pairs_)),
      blurred_(static_cast<size_t>(image.Width())),
      nextPlace_(1 - pairs_) {
    for (int32_t k = 0; k < pairs_; ++k) {
        const double tap = Exp(-(k + 0.5) * (k + 0.5) / (2 * sigma * sigma));
        rowWeights_.push_back(static_cast<float>(tap));
        columnWeights_.push_back(static_cast<float>(tap * weight));
    }
}

float* FineBlur::KeptRow(int32_t place) {
    // Places begin at 1 - pairs.
    const auto slot = static_cast<size_t>((place + pairs_) % (2 * pairs_));
    return kept_.data() + slot * static_cast<size_t>(image_.Width());
}

void FineBlur::KeepRowFilter(int32_t place) {
    const int32_t width = image_.Width();
    int32_t row = place % image_.Height();
    if (row < 0) row += image_.Height();
    kernels_.widenRow(image_.Row(row), smallest_, width, line_.data() + pairs_);
    const auto lineWidth = static_cast<size_t>(width);
    for (size_t i = 0; i < static_cast<size_t>(pairs_); ++i) {
        line_[i] = line_[i + lineWidth];
        line_[i + lineWidth + static_cast<size_t>(pairs_)] = line_[i + static_cast<size_t>(pairs_)];
    }
    // Both halves in turn, each of places that follow one another.
    const int32_t half = width / 2;
    const int32_t count = CountBlurredPlaces(width);
    for (const int32_t start : {0, half}) {
        const float* first = line_.data() + pairs_ + BlurredPlace(start, width);
        for (int32_t k = 0; k < pairs_; ++k) {
            seen_[size_t{2} * static_cast<size_t>(k)] = first - k;
            seen_[size_t{2} * static_cast<size_t>(k) + 1] = first + 1 + k;
        }
        kernels_.combinePairs(seen_.data(), rowWeights_.data(), pairs_, start == 0 ? half : count - half,
                              KeptRow(place) + start);
    }
}

const float* FineBlur::MakeRow(int32_t row) {
    const int32_t place = BlurredPlace(row, image_.Height());
    for (; nextPlace_ <= place + pairs_; ++nextPlace_) KeepRowFilter(nextPlace_);
    for (int32_t k = 0; k < pairs_; ++k) {
        seen_[size_t{2} * static_cast<size_t>(k)] = KeptRow(place - k);
        seen_[size_t{2} * static_cast<size_t>(k) + 1] = KeptRow(place + 1 + k);
    }
    kernels_.combinePairs(seen_.data(), columnWeights_.data(), pairs_, CountBlurredPlaces(image_.Width()),
                          blurred_.data());
    return blurred_.data();
}

}  // namespace vastrelline
