// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "lint/FindingSink.h"

namespace vastrelline {

struct FixedProfile {
    std::string bytes;
    size_t count = 0;  // of the fixes that were made
};

// A profile with the fixes of its findings made; every other byte stays. Of fixes that touch one another the
// first is made.
FixedProfile ApplyFixes(const std::string& bytes, std::span<const LintFinding> findings);

// Finds and mends until nothing is left that is certain.
//
// section   as LintProfile
FixedProfile FixProfile(const std::string& path, std::string bytes, std::string_view section);

}  // namespace vastrelline
