// SPDX-License-Identifier: Apache-2.0
#include "chains/ReturnCode.h"

#include <stdexcept>

#include "config/CRegistryIO.h"
#include "pixels/FrameLimits.h"
#include "vastrelline.h"

namespace vastrelline {

static_assert(kSuccess == VASTRELLINE_OK && kNoProfile == VASTRELLINE_NO_PROFILE &&
              kNoInput == VASTRELLINE_NO_INPUT && kNoOutput == VASTRELLINE_NO_OUTPUT &&
              kNoSection == VASTRELLINE_NO_SECTION && kNoBitmap == VASTRELLINE_NO_BITMAP &&
              kInternalFailure == VASTRELLINE_INTERNAL_FAILURE);

ReturnCode TestDriverArguments(const std::wstring& iniPath, const uint16_t* input, const uint16_t* output) {
    const ReadResult profile = CRegistryIO(nullptr, iniPath.c_str(), 1).State();
    if (profile == ReadResult::Failed) return kInternalFailure;
    if (profile != ReadResult::Done) return kNoProfile;
    if (input == nullptr) return kNoInput;
    if (output == nullptr) return kNoOutput;
    return kSuccess;
}

int32_t CountPixels(int32_t width, int32_t height) {
    if (IsBeyondPixelLimit(width, height)) throw std::length_error("CountPixels: frame too large");
    return static_cast<int32_t>(int64_t{width} * height);
}

bool HasPixels(int32_t width, int32_t height) {
    return width > 0 && height > 0 && CountPixels(width, height) > 0;
}

}  // namespace vastrelline
