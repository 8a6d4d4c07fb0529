// SPDX-License-Identifier: Apache-2.0
#include "Options.h"

#include <charconv>
#include <stdexcept>

namespace vastrelline::digest {

const char* const kDigestHelp =
    "usage: vastrelline_digest [OPTION]...\n"
    "Runs the library on a fixed set of made frames and profiles and prints a SHA-256 of what came of each "
    "group\n"
    "of runs, and one of all. The same on every machine, with every build.\n"
    "\n"
    "  --check FILE        compare with the list in FILE; exit with 1 if a group differs\n"
    "  --write FILE        write the list to FILE\n"
    "  --only NAME         this group only; may be repeated\n"
    "  --list              print the groups and their number of runs\n"
    "  --runs NAME         print a hash for each run of a group\n"
    "  --show NAME RUN     print the call of a run, its profile, and what came of it\n"
    "  --folder FOLDER     put the files of the runs there\n"
    "  --threads N         run N groups at once\n"
    "  --locale NAME       under a locale with a decimal comma\n"
    "  --x87-double        call with the x87 unit at 53 bits\n"
    "  --round-up          call with inexact results rounded upwards\n"
    "  --flush-denormals   call with tiny numbers taken for 0\n"
    "  --limit SET         use no kernels beyond reference, baseline, avx2 or avx512; needs\n"
    "                      vastrelline_digest_limited, which has the library inside\n"
    "\n"
    "Exit code 0: done, or as expected; 1: a group differs; 2: it could not run; 77: this machine does not "
    "have\n"
    "the locale, the instructions or the unit.\n";

namespace {

constexpr size_t kMostThreads = 64;

size_t ReadNumber(const std::string& text) {
    size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument("no number: " + text);
    return number;
}

std::string ReadSet(const std::string& text) {
    for (const char* set : {"reference", "baseline", "avx2", "avx512"})
        if (text == set) return text;
    throw std::invalid_argument("no set of instructions: " + text);
}

}  // namespace

DigestOptions ReadOptions(const std::vector<std::string>& words) {
    using Task = DigestOptions::Task;
    DigestOptions options;
    size_t at = 0;
    const auto next = [&]() -> const std::string& {
        if (++at >= words.size()) throw std::invalid_argument("something is missing behind " + words.back());
        return words[at];
    };
    for (; at < words.size(); ++at) {
        const std::string& word = words[at];
        if (word == "--check") {
            options.check = next();
        } else if (word == "--write") {
            options.write = next();
        } else if (word == "--only") {
            options.only.push_back(next());
        } else if (word == "--list") {
            options.task = Task::List;
        } else if (word == "--runs") {
            options.task = Task::Runs;
            options.group = next();
        } else if (word == "--show") {
            options.task = Task::Show;
            options.group = next();
            options.run = ReadNumber(next());
        } else if (word == "--folder") {
            options.folder = next();
        } else if (word == "--threads") {
            options.threads = ReadNumber(next());
            if (options.threads < 1 || options.threads > kMostThreads)
                throw std::invalid_argument("threads are 1 to 64");
        } else if (word == "--locale") {
            options.locale = next();
        } else if (word == "--limit") {
            options.limit = ReadSet(next());
        } else if (word == "--x87-double") {
            options.habits.x87Double = true;
        } else if (word == "--round-up") {
            options.habits.roundsUp = true;
        } else if (word == "--flush-denormals") {
            options.habits.flushesDenormals = true;
        } else if (word == "--help") {
            options.task = Task::Help;
        } else {
            throw std::invalid_argument("unknown: " + word);
        }
    }
    return options;
}

}  // namespace vastrelline::digest
