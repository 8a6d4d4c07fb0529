// SPDX-License-Identifier: Apache-2.0
#include "commands/OutputEnding.h"

#include <algorithm>
#include <filesystem>

#include "messages/ToolError.h"
#include "platform/PathText.h"

namespace vastrelline {

void TestEnding(const std::string& path, std::string_view ending, const std::string& option) {
    std::string own = PathOf(path).extension().string();
    std::transform(own.begin(), own.end(), own.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (!path.empty() && own != ending)
        throw UsageError(option + " writes a file that ends in " + std::string(ending) + ", not '" + path +
                         "'");
}

}  // namespace vastrelline
