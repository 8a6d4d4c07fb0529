// SPDX-License-Identifier: Apache-2.0

// The library once more, in which one pixel of one stage can be changed: whoever proves builds must find it.
// The linker leads the calls of a function to its namesake here (--wrap); VASTRELLINE_PLANT says which of
// them changes something.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "exports/ProcessFrame.h"
#include "stages/gaussian/GaussianPasses.h"

namespace vastrelline {
namespace {

bool IsPlanted(std::string_view place) {
    const char* const wish = std::getenv("VASTRELLINE_PLANT");
    return wish != nullptr && wish == place;
}

// By one level, in the middle, where no corner covers it.
void ChangeOnePixel(uint16_t* pixels, int32_t width, int32_t height) {
    uint16_t& pixel =
        pixels[static_cast<size_t>(height / 2) * static_cast<size_t>(width) + static_cast<size_t>(width / 2)];
    pixel = static_cast<uint16_t>(pixel == 0 ? 1 : pixel - 1);
}

}  // namespace

// Below, each pair: what the linker calls the library's own function, and what it calls in its place.

void TrueGaussian(
    uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
    const GaussianParams& params) asm("__real__ZN11vastrelline14SmoothGaussianEPtiiiRKNS_14GaussianParamsE");
void PlantedGaussian(
    uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
    const GaussianParams& params) asm("__wrap__ZN11vastrelline14SmoothGaussianEPtiiiRKNS_14GaussianParamsE");
void PlantedGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                     const GaussianParams& params) {
    TrueGaussian(pixels, width, height, maxValue, params);
    if (IsPlanted("gaussian")) ChangeOnePixel(pixels, width, height);
}

void TrueClahe(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
               int32_t bins, double maxSlope) asm("__real__ZN11vastrelline10ClaheFrameEPtiiiiid");
void PlantedClahe(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                  int32_t bins, double maxSlope) asm("__wrap__ZN11vastrelline10ClaheFrameEPtiiiiid");
void PlantedClahe(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                  int32_t bins, double maxSlope) {
    TrueClahe(pixels, width, height, maxValue, blockSize, bins, maxSlope);
    if (IsPlanted("clahe")) ChangeOnePixel(pixels, width, height);
}

ReturnCode TrueProcess(const ProcessCall& call,
                       uint16_t* output) asm("__real__ZN11vastrelline12ProcessFrameERKNS_11ProcessCallEPt");
ReturnCode PlantedProcess(const ProcessCall& call, uint16_t* output) asm(
    "__wrap__ZN11vastrelline12ProcessFrameERKNS_11ProcessCallEPt");
ReturnCode PlantedProcess(const ProcessCall& call, uint16_t* output) {
    const ReturnCode code = TrueProcess(call, output);
    if (IsPlanted("result")) ChangeOnePixel(output, call.width, call.height);
    return code;
}

}  // namespace vastrelline
