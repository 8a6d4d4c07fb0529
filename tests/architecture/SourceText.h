// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

struct Token {
    std::string text;  // a word, a number, a sign, or a lone '"' in place of any literal
    bool isWord;       // of letters, digits and '_', not beginning with a digit
};

// A source file without comments, literals and preprocessor lines, and what those lines say.
struct SourceText {
    std::vector<Token> tokens;
    std::set<std::string> macroWords;         // in the bodies of macros
    std::vector<std::string> quotedIncludes;  // "..." as written
    std::vector<std::string> systemIncludes;  // <...> as written
};

// Branches of #if are all read, one after the other.
SourceText ReadSourceText(std::string_view text);

}  // namespace vastrelline
