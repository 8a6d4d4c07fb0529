// SPDX-License-Identifier: Apache-2.0
#include "views/SmallPicture.h"

#include <algorithm>

#include "views/FrameView.h"

namespace vastrelline {

SmallPicture MakeSmallPicture(const Frame& frame, int32_t topLevel) {
    const int32_t longer = std::max(frame.width, frame.height);
    const auto scaled = [&](int32_t side) {
        if (longer <= kSmallPictureSide) return side;
        return std::max(1, static_cast<int32_t>(int64_t{side} * kSmallPictureSide / longer));
    };
    SmallPicture picture{scaled(frame.width), scaled(frame.height), {}};
    picture.grey = RenderView(frame,
                              {0.0, 0.0, static_cast<double>(frame.width), static_cast<double>(frame.height),
                               static_cast<uint32_t>(picture.width), static_cast<uint32_t>(picture.height)},
                              {0, topLevel});
    return picture;
}

}  // namespace vastrelline
