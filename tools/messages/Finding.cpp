// SPDX-License-Identifier: Apache-2.0
#include "messages/Finding.h"

namespace vastrelline {

std::string_view SeverityName(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            break;
    }
    return "error";
}

std::string FormatFinding(const Finding& finding) {
    std::string line = finding.file;
    const auto add = [&line](std::string_view separator, std::string_view text) {
        line.append(separator).append(text);
    };
    if (finding.line > 0) add(":", std::to_string(finding.line));
    if (finding.line > 0 && finding.column > 1) add(":", std::to_string(finding.column));
    add(line.empty() ? "" : ": ", SeverityName(finding.severity));
    add(": ", finding.text);
    if (!finding.rule.empty()) line.append(" [").append(finding.rule).append("]");
    return line;
}

}  // namespace vastrelline
