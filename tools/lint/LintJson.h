// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "lint/FindingSink.h"
#include "messages/ToolError.h"

namespace vastrelline {

// What lint has to say of one file.
struct LintedFile {
    std::string path;
    std::vector<LintFinding> findings;
    std::optional<ToolError> error;  // the file cannot be read, or the fixes cannot be written
    size_t fixCount = 0;             // of the fixes that were made before the findings
};

// The files with their findings, and the numbers of errors, warnings and notes, as docs/tool-json.md tells.
nlohmann::ordered_json LintToJson(std::span<const LintedFile> files);

// A log of the Static Analysis Results Interchange Format 2.1.0, for code hosts and editors.
std::string FormatLintSarif(std::span<const LintedFile> files);

}  // namespace vastrelline
