// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "messages/Finding.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// A change of a profile's bytes that mends a finding for certain.
struct LintFix {
    ByteRange range;    // of the file
    std::string bytes;  // that take its place
    std::string text;   // "write 1.5", for people
};

struct LintFinding {
    Finding finding;
    std::optional<LintFix> fix;
};

// A name or value of a profile within a message: short, in quotes where blanks or oddities would mislead.
std::string ShownText(const std::string& text);

// Takes what one rule finds.
class FindingSink {
public:
    FindingSink(const ProfileFile& file, std::string_view rule, Severity severity,
                std::vector<LintFinding>& findings)
        : file_(file), rule_(rule), severity_(severity), findings_(findings) {}

    // At a byte of the file.
    void Add(size_t offset, std::string text, std::optional<LintFix> fix = std::nullopt) {
        Add(severity_, offset, std::move(text), std::move(fix));
    }

    // Of another severity than the rule mostly has.
    void Add(Severity severity, size_t offset, std::string text, std::optional<LintFix> fix = std::nullopt);

    // About the whole file.
    void AddForFile(std::string text);

private:
    const ProfileFile& file_;
    std::string_view rule_;
    Severity severity_;
    std::vector<LintFinding>& findings_;
};

}  // namespace vastrelline
