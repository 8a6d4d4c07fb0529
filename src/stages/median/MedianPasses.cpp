// SPDX-License-Identifier: Apache-2.0
#include "stages/median/MedianPasses.h"

#include "operators/median/MedianWindow.h"
#include "operators/repeat/RepeatedPasses.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/median/RowBands.h"

namespace vastrelline {

namespace {

enum MedianMode : int32_t { kRowsThenColumns = 1, kRowsOnly = 2, kColumnsOnly = 3 };

void FilterRowBand(const RowBandJob& job) {
    const RowBandParameters& parameters = *job.parameters;
    MedianSquareRange(job.source, job.destination, parameters.width, parameters.height,
                      TruncateToInt32(parameters.mask), job.firstRow, job.lastRow);
}

// before   room for the frame as it came
void FilterSquareOnThreads(const FrameView<uint16_t>& frame, int32_t mask, ScratchVector<uint16_t>& before) {
    const RowBandParameters parameters{frame.Width(), frame.Height(), static_cast<double>(mask)};
    // Half of the window that the threads work with: that of a mask of 0 or 1 would reach out of the frame.
    const int32_t half = WidenMedianMask(mask) / 2;
    before.assign(frame.begin(), frame.end());
    RunOnRowBands(FilterRowBand, parameters, before.data(), frame.begin(), half, frame.Height() - half - 1);
}

}  // namespace

void FilterMedianPasses(uint16_t* pixels, int32_t width, int32_t height, const MedianParams& params) {
    const FrameView<uint16_t> frame(pixels, width, height);
    const int32_t mask = params.MEDIAN_SIZE;
    ScratchVector<uint16_t> before;
    RepeatPasses(frame, params.MEDIAN_REPEAT, [&] {
        switch (params.MEDIAN_Mode) {
            case kRowsThenColumns:
                MedianRows(pixels, width, height, mask);
                MedianColumns(pixels, width, height, mask);
                break;
            case kRowsOnly:
                MedianRows(pixels, width, height, mask);
                break;
            case kColumnsOnly:
                MedianColumns(pixels, width, height, mask);
                break;
            default:
                FilterSquareOnThreads(frame, mask, before);
        }
    });
}

void FilterMedianSquarePasses(uint16_t* pixels, int32_t width, int32_t height, int32_t mask, int32_t repeat) {
    RepeatPasses({pixels, width, height}, repeat, [&] { MedianSquare(pixels, width, height, mask); });
}

}  // namespace vastrelline
