// SPDX-License-Identifier: Apache-2.0
#include "profile/TopLevel.h"

#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

constexpr int32_t kUsualRange = 4095;  // frames of 12 bits
constexpr int32_t kTopPixel = 65535;

}  // namespace

int32_t ReadTopLevel(const ProfileFile& file, const std::string& section) {
    const int32_t range = ReadIntegerKey(file, section, "OUTPUTRANGE", kUsualRange);
    return range >= 1 && range <= kTopPixel ? range : kUsualRange;
}

}  // namespace vastrelline
