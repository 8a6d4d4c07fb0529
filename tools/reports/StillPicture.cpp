// SPDX-License-Identifier: Apache-2.0
#include "reports/StillPicture.h"

#include <algorithm>
#include <cstddef>

#include "formats/PngFormat.h"
#include "pictures/Canvas.h"
#include "pictures/Caption.h"
#include "reports/Base64.h"

namespace vastrelline {
namespace {

// Blocks of `side` pixels as one: the largest.
Frame Pool(const Frame& frame, int32_t side) {
    Frame small{(frame.width + side - 1) / side, (frame.height + side - 1) / side, {}};
    small.pixels.resize(PixelCount(small.width, small.height));
    size_t i = 0;
    for (int32_t y = 0; y < frame.height; ++y) {
        uint16_t* const row = small.pixels.data() + PixelCount(small.width, y / side);
        for (int32_t x = 0; x < frame.width; ++x, ++i)
            row[x / side] = std::max(row[x / side], frame.pixels[i]);
    }
    return small;
}

StillPicture Encode(const Canvas& canvas) {
    return {
        "data:image/png;base64," + EncodeBase64(EncodePng8(canvas.Levels(), canvas.Width(), canvas.Height())),
        canvas.Width(), canvas.Height()};
}

}  // namespace

StillPicture DrawStill(const Frame& frame, GreyWindow window, int32_t box) {
    const Canvas whole(frame.width, frame.height, RenderThroughWindow(frame, window));
    const PictureSize size = FitInto(whole, {box, box});
    const bool isWhole = size.width == frame.width && size.height == frame.height;
    return Encode(isWhole ? whole : Shrink(whole, size.width, size.height));
}

StillPicture DrawStillDifference(const Frame& differences, int32_t white, int32_t box) {
    const int32_t longSide = std::max(differences.width, differences.height);
    const Frame small = Pool(differences, (longSide + box - 1) / box);
    return Encode(Canvas(small.width, small.height, RenderThroughWindow(small, {0, white})));
}

}  // namespace vastrelline
