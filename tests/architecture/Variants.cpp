// SPDX-License-Identifier: Apache-2.0
#include "Variants.h"

#include <algorithm>

namespace vastrelline {

std::vector<std::string> ListVariantLists(const ParsedTree& sources) {
    std::vector<std::string> lists;
    for (const auto& [path, file] : sources) {
        if (!path.ends_with(".h")) continue;
        for (const FunctionSite& site : file.functions.sites)
            if (site.name.ends_with("Variants") && !site.hasParameters) lists.push_back(site.name);
    }
    return lists;
}

Findings FindUnwalkedLists(const std::vector<std::string>& lists, const ParsedTree& tree,
                           const std::string& place) {
    Findings unwalked;
    for (const std::string& list : lists) {
        const bool isWalked = std::any_of(tree.begin(), tree.end(), [&](const auto& file) {
            const auto& tokens = file.second.text.tokens;
            return std::any_of(tokens.begin(), tokens.end(),
                               [&](const Token& token) { return token.text == list; });
        });
        if (!isWalked)
            unwalked[list] = list + "() is walked by no file of " + place + ": every form belongs there";
    }
    return unwalked;
}

}  // namespace vastrelline
