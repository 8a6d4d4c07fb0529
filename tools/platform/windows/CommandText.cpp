// SPDX-License-Identifier: Apache-2.0
#include "platform/windows/CommandText.h"

#include <cstddef>

namespace vastrelline {
namespace {

// A quotation mark is told from the closing one by a backslash, and that makes backslashes before either of
// them count double.
void AppendQuoted(std::string& line, const std::string& word) {
    line += '"';
    size_t backslashes = 0;
    for (const char c : word) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        line.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        line += c;
    }
    line.append(2 * backslashes, '\\').append("\"");
}

}  // namespace

std::string JoinCommandLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += ' ';
        AppendQuoted(line, word);
    }
    return line;
}

}  // namespace vastrelline
