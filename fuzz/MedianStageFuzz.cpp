// SPDX-License-Identifier: Apache-2.0

// The passes of the median stage on a small frame with keys from anywhere. The input's head is the frame, its
// tail picks size and keys, so that a change of the keys leaves the pixels where they are.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/median/MedianWindow.h"
#include "stages/median/MedianPasses.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

void TestPasses(const std::vector<uint16_t>& pixels, int32_t width, int32_t height,
                const MedianParams& params) {
    std::vector<uint16_t> onThreads = pixels;
    FilterMedianPasses(onThreads.data(), width, height, params);
    if (params.MEDIAN_Mode >= 1 && params.MEDIAN_Mode <= 3) return;
    std::vector<uint16_t> onCallersThread = pixels;
    FilterMedianSquarePasses(onCallersThread.data(), width, height, WidenMedianMask(params.MEDIAN_SIZE),
                             params.MEDIAN_REPEAT);
    Require(onThreads == onCallersThread, "threads make no difference");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kLargestWidth = 72;
    constexpr uint8_t kLargestHeight = 20;
    constexpr uint8_t kUsualMasks = 18;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % (kLargestWidth + 1);
    const int32_t height = tail.Take<uint8_t>() % (kLargestHeight + 1);
    const bool isUsual = tail.Take<uint8_t>() % 2 == 0;  // most of 2^32 masks fit into no frame
    const int32_t usualMask = tail.Take<uint8_t>() % kUsualMasks + 1;
    const int32_t anyMask = tail.Take<int32_t>();
    MedianParams params;
    params.MEDIAN_SIZE = isUsual ? usualMask : anyMask;
    params.MEDIAN_REPEAT = tail.Take<int32_t>();
    params.MEDIAN_Mode = tail.Take<int8_t>();
    TestPasses(tail.TakeFrame(width, height), width, height, params);
    return 0;
}
