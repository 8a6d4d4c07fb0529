// SPDX-License-Identifier: Apache-2.0
#include "profile/MissingSection.h"

#include <string>
#include <vector>

#include "messages/Suggestion.h"

namespace vastrelline {

ToolError MissingSection(const ProfileFile& file, std::string_view section) {
    const std::vector<std::string> names = file.SectionNames();
    std::string all;
    for (const std::string& name : names) all.append(all.empty() ? "it has " : ", ").append(name);
    return {ExitCode::WrongUse, file.Path(), "has no section '" + std::string(section) + "'",
            DidYouMean(section, names, all)};
}

}  // namespace vastrelline
