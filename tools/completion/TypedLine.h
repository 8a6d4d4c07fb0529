// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vastrelline {

// How far a command line has come: which command it names, what it gave, and what the word at its end may be.
struct TypedLine {
    const CLI::App* command = nullptr;
    const CLI::Option* pending =
        nullptr;                         // its value comes next; null: an option, a name or an argument does
    std::string valuePrefix;             // "--profile=" if the value stands in the same word
    std::string current;                 // the word at the end, or the value in it
    bool isOptionsEnd = false;           // "--" stood before
    std::vector<std::string> arguments;  // those without a name
    std::map<std::string, std::string> values;  // of options, by their long name without dashes
    std::vector<const CLI::Option*> given;      // options that stand there already
};

// words     behind the program's name, without the one at the end
// current   the word at the end, which may be empty
TypedLine ReadTypedLine(const CLI::App& root, const std::vector<std::string>& words,
                        const std::string& current);

// The argument without a name that comes next; null if the command takes no more. One that takes several
// takes all that follow.
const CLI::Option* NextArgument(const TypedLine& line);

}  // namespace vastrelline
