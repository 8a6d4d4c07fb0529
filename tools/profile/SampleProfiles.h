// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

namespace vastrelline {

// The profiles of the folder profiles/, which the build puts into the tool.
struct SampleProfile {
    std::string_view name;  // "dental"
    std::string_view text;
};

// By name.
std::span<const SampleProfile> SampleProfiles();

}  // namespace vastrelline
