#pragma once

#include <span>
#include <string>
#include <vector>

#include "lint/FindingSink.h"

namespace vastrelline {

// What lint has to say of one file.
struct LintedFile {
    std::string path;
    std::vector<LintFinding> findings;
    std::string error;    // the file cannot be read, or the fixes cannot be written; empty: all went well
    size_t fixCount = 0;  // of the fixes that were made before the findings
};

// One JSON object: the files with their findings, and the numbers of errors, warnings and notes.
std::string FormatLintJson(std::span<const LintedFile> files);

// A log of the Static Analysis Results Interchange Format 2.1.0, for code hosts and editors.
std::string FormatLintSarif(std::span<const LintedFile> files);

}  // namespace vastrelline
