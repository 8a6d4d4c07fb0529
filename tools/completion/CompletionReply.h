// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vastrelline {

// The word in front of the questions that the scripts of the shells ask the tool.
inline constexpr const char* kCompletionWord = "__complete";

// Answers a shell's script: a line for each candidate, "+" and the candidate, for other shells than bash with
// a tab and a description behind it; ":files PREFIX" or ":folders PREFIX" where the shell should offer its
// files itself; ":nospace" where nothing should follow a candidate.
//
// question   the name of the shell; then, for bash, the line as far as it is typed, for others "=" and the
// word at
//            its end (so that the argument is never empty, which some shells drop), and the words before it,
//            without the program's name
std::string AnswerShell(const CLI::App& root, const std::vector<std::string>& question);

}  // namespace vastrelline
