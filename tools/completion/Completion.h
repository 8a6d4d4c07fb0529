// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vastrelline {

// One way to go on: the whole word, not only what is missing of it.
struct Candidate {
    std::string text;
    std::string description;  // one line for people; may be empty
};

enum class FileWish : uint8_t { None, Files, Folders };

struct Completion {
    std::vector<Candidate> candidates;  // begin with what is typed
    FileWish files = FileWish::None;    // the shell should offer files itself
    std::string filePrefix;             // what stands before the file's name in the word: "--profile="
    bool goesOn = false;                // a candidate is no whole word yet: no blank behind it
};

// What may stand at the end of a command line: commands, options, their values, sections and keys of the
// profile that the line names.
//
// words     behind the program's name, without the one at the end
// current   the word at the end, which may be empty
Completion CompleteWords(const CLI::App& root, const std::vector<std::string>& words,
                         const std::string& current);

}  // namespace vastrelline
