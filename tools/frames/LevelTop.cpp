// SPDX-License-Identifier: Apache-2.0
#include "frames/LevelTop.h"

namespace vastrelline {
namespace {

constexpr uint16_t kTopOfByte = 255;
constexpr uint16_t kTopOf12Bits = 4095;
constexpr uint16_t kTopOf16Bits = 65535;

}  // namespace

int32_t UsualTop(uint16_t level) {
    if (level <= kTopOfByte) return kTopOfByte;
    return level <= kTopOf12Bits ? kTopOf12Bits : kTopOf16Bits;
}

}  // namespace vastrelline
