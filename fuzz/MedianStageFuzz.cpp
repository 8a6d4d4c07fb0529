// The median on a small frame with a window and rows from anywhere: every form against the plain one. The
// input's head is the frame, its tail picks size and options, so that a change of the options leaves the
// pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "operators/median/MedianFilter.h"
#include "operators/median/MedianWindow.h"
#include "stages/median/MedianPasses.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

void TestVariants(const std::vector<uint16_t>& pixels, MedianCall call) {
    std::vector<uint16_t> expected(pixels.size());
    call.source = pixels.data();
    call.destination = expected.data();
    FilterMedianWith(MedianVariants().front(), call);
    for (const MedianVariant& variant : MedianVariants()) {
        std::vector<uint16_t> result(pixels.size());
        call.destination = result.data();
        FilterMedianWith(variant, call);
        Require(result == expected, "every form gives the plain one's pixels");
    }
}

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
    constexpr uint8_t kLargestWindow = 18;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % (kLargestWidth + 1);
    const int32_t height = tail.Take<uint8_t>() % (kLargestHeight + 1);
    MedianCall call{nullptr, nullptr, width, height, 1, 1, 0, 0};
    call.windowWidth = tail.Take<uint8_t>() % kLargestWindow + 1;
    call.windowHeight = tail.Take<uint8_t>() % kLargestWindow + 1;
    call.firstRow = tail.Take<int8_t>();
    call.lastRow = tail.Take<int8_t>();
    const bool isSquare = tail.Take<uint8_t>() % 2 == 0;  // most networks are for squares
    if (isSquare) call.windowHeight = call.windowWidth;
    MedianParams params;
    params.MEDIAN_SIZE = tail.Take<int32_t>();
    params.MEDIAN_REPEAT = tail.Take<int32_t>();
    params.MEDIAN_Mode = tail.Take<int8_t>();
    if (isSquare) params.MEDIAN_SIZE = call.windowWidth;
    const std::vector<uint16_t> pixels = tail.TakeFrame(width, height);
    TestVariants(pixels, call);
    TestPasses(pixels, width, height, params);
    return 0;
}
