// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lint/LintedSection.h"
#include "messages/Suggestion.h"

namespace vastrelline {

// The key whose misspelling a line seems to be that no run reads.
struct KeySuggestion {
    std::string name;  // that is read here; empty: nothing is near
    // One wrong letter, in a long name two; no other name is as near, and it stands nowhere yet.
    bool isSure = false;
};

// Finds names for misspelt ones. In a section of very many lines only the first ones are compared.
class KeySuggester {
public:
    explicit KeySuggester(const LintedSection& section);

    KeySuggestion Suggest(const ProfileEntry& entry);

private:
    const LintedSection& section_;
    std::vector<std::string> names_;
    size_t budget_;
};

// The names under which the list's stages read a key, by position: "03_MAX_SLOPE", "04_MAX_SLOPE".
std::vector<std::string> PlacesOfKey(const LintedSection& section, std::string_view key);

// "did you mean 03_MAX_SLOPE or 04_MAX_SLOPE?", or the other text without a name.
std::string AskFor(const std::vector<std::string>& names, std::string_view otherwise);

}  // namespace vastrelline
