// SPDX-License-Identifier: Apache-2.0

// The small steps that prepare a frame (bits of a pixel, saturation, cutting out, decision about the
// exposure) with arguments from anywhere, each against the same written down plainly. The input's head is the
// frame, its tail picks size and arguments.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/OtsuThreshold.h"
#include "sensor/CropBuffer.h"
#include "sensor/ExposureDecision.h"
#include "sensor/PixelBits.h"
#include "sensor/SaturationCap.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Frame {
    int32_t width;
    int32_t height;
    std::vector<uint16_t> pixels;
};

void TestBits(const Frame& frame, int32_t bits) {
    constexpr int32_t kPixelBits = 16;
    std::vector<uint16_t> pixels = frame.pixels;
    int32_t bitsFromThenOn = bits;
    const int32_t maxValue = RescaleToPixelBits(pixels.data(), frame.width, frame.height, bitsFromThenOn);
    Require(bitsFromThenOn == std::min(bits, kPixelBits), "no frame has more bits than its pixels");
    if (bits <= kPixelBits) {
        Require(pixels == frame.pixels, "a frame that fits stays");
        return;
    }
    Require(maxValue == 65535, "what was rescaled has the range of a pixel");
    for (size_t i = 1; i < pixels.size(); ++i)
        Require((frame.pixels[i - 1] <= frame.pixels[i]) <= (pixels[i - 1] <= pixels[i]), "the ramp rises");
}

void TestCap(const Frame& frame, int32_t saturation) {
    std::vector<uint16_t> pixels = frame.pixels;
    CapSaturation(pixels.data(), frame.width, frame.height, saturation);
    std::vector<uint16_t> sorted = frame.pixels;
    std::sort(sorted.begin(), sorted.end());
    const auto first =
        std::find_if(sorted.begin(), sorted.end(), [&](uint16_t p) { return p >= saturation; });
    const uint16_t brightest = first == sorted.begin() ? uint16_t{0} : *(first - 1);
    for (size_t i = 0; i < pixels.size(); ++i)
        Require(pixels[i] == std::min(frame.pixels[i], brightest),
                "saturated pixels are the brightest below");
}

void TestCrop(const Frame& frame, InputTail tail) {
    constexpr size_t kSizes[] = {2, 2, 4, 8, 1, 2};
    const auto type = static_cast<ElementType>(tail.Take<uint8_t>() % std::size(kSizes));
    const size_t elementBytes = kSizes[static_cast<size_t>(type)];
    const auto takeOffset = [&] {
        return tail.Take<uint8_t>() % 8 == 0 ? tail.Take<int32_t>() : tail.Take<int8_t>();
    };
    const int32_t left = takeOffset();
    const int32_t top = takeOffset();
    const int32_t width = tail.Take<uint8_t>() % 40;
    const int32_t height = tail.Take<uint8_t>() % 40;
    // As many elements as the frame's bytes make.
    const auto sourceWidth = static_cast<int32_t>(static_cast<size_t>(frame.width) * 2 / elementBytes);
    std::vector<std::byte> source(static_cast<size_t>(sourceWidth) * static_cast<size_t>(frame.height) *
                                  elementBytes);
    if (!source.empty()) std::memcpy(source.data(), frame.pixels.data(), source.size());
    const ScratchVector<std::byte> crop =
        CropBuffer(source.data(), sourceWidth, frame.height, left, top, width, height, type);
    Require(crop.size() == static_cast<size_t>(width) * static_cast<size_t>(height) * elementBytes,
            "the cut has the size that was asked for");
    const bool isKnown = type <= ElementType::Unsigned8;
    for (int64_t y = 0; y < height; ++y) {
        for (int64_t x = 0; x < width; ++x) {
            const int64_t fromX = x + left;
            const int64_t fromY = y + top;
            const bool isInside =
                isKnown && fromX >= 0 && fromX < sourceWidth && fromY >= 0 && fromY < frame.height;
            for (size_t byte = 0; byte < elementBytes; ++byte) {
                const size_t to = static_cast<size_t>(y * width + x) * elementBytes + byte;
                const std::byte expected =
                    isInside ? source[static_cast<size_t>(fromY * sourceWidth + fromX) * elementBytes + byte]
                             : std::byte{0};
                Require(crop[to] == expected, "an element is that of its place, or 0 outside");
            }
        }
    }
}

void TestDecision(const Frame& frame, int32_t maxValue, double lowThreshold) {
    const std::vector<uint32_t> histogram =
        BuildHistogram(frame.pixels.data(), frame.width, frame.height, maxValue);
    const int32_t threshold = ComputeOtsuThreshold(frame.pixels.data(), frame.width, frame.height, maxValue);
    Require(threshold == ComputeOtsuThreshold(histogram, static_cast<double>(frame.pixels.size())),
            "a frame's counts are all that decides");
    Require(threshold >= 0 && threshold <= maxValue, "a threshold is a level");
    DoseRecord record{};
    const int32_t isLow = ClassifyExposure(frame.pixels.data(), frame.width, frame.height, histogram,
                                           threshold, lowThreshold, maxValue, record);
    int32_t total = 0;
    int32_t low = 0;
    for (const uint16_t pixel : frame.pixels) {
        const int32_t level = std::min<int32_t>(pixel, maxValue);
        if (level >= threshold) continue;
        ++total;
        if (level < 100) ++low;
    }
    Require(record.ObjectTotal == total && record.LowSignal == low, "the record counts the object's pixels");
    Require(total > 0 ? record.LowRatio == static_cast<double>(low) / total : std::isnan(record.LowRatio),
            "the ratio is that of the counts");
    Require(record.LowExposure == isLow && isLow == (record.LowRatio > lowThreshold ? 1 : 0),
            "a ratio above the threshold is a low exposure");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kLargestSide = 32;
    InputTail tail(data, size);
    Frame frame{};
    frame.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    frame.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    const int32_t bits = tail.Take<int8_t>() % 26;
    const int32_t saturation = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<int32_t>() : tail.Take<uint16_t>();
    const int32_t maxValue = tail.Take<uint16_t>() >> (tail.Take<uint8_t>() % 12);
    const double lowThreshold =
        tail.Take<uint8_t>() % 2 == 0 ? tail.Take<uint8_t>() / 256.0 : tail.Take<double>();
    const InputTail cropTail(tail);
    for (int i = 0; i < 16; ++i) static_cast<void>(tail.Take<uint8_t>());
    frame.pixels = tail.TakeFrame(frame.width, frame.height);
    TestBits(frame, bits);
    TestCap(frame, saturation);
    TestCrop(frame, cropTail);
    TestDecision(frame, maxValue, lowThreshold);
    return 0;
}
