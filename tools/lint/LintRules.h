// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lint/FindingSink.h"
#include "lint/LintedSection.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// A row of the table of rules.
struct LintRule {
    std::string_view id;
    Severity severity;         // that its findings mostly have
    std::string_view summary;  // one sentence: what is found
    std::string_view remedy;   // one sentence: why it matters or what to do
    bool canFix;
    void (*findInFile)(const ProfileFile& file, FindingSink& sink);          // or null
    void (*findInSection)(const LintedSection& section, FindingSink& sink);  // or null
};

std::span<const LintRule> LintRules();

// What all rules find in a profile, by lines.
//
// section   only this one, and what concerns the whole file; empty: all. Errors: InputError if it is missing
std::vector<LintFinding> LintProfile(const ProfileFile& file, std::string_view section = {});

}  // namespace vastrelline
