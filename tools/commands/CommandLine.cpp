// SPDX-License-Identifier: Apache-2.0
#include "commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "commands/CommandTree.h"
#include "commands/JsonObject.h"
#include "completion/CompletionReply.h"
#include "completion/ShellQuote.h"
#include "messages/ErrorJson.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"

namespace vastrelline {
namespace {

constexpr const char* kAllCommands = "'vastrelline --help' lists all commands.\n";

std::string FullName(const CommandEntry& entry) {
    return (entry.group.empty() ? "" : std::string(entry.group) + " ") + std::string(entry.name);
}

const CommandTree::Branch* FindBranch(const CommandTree& tree, const std::vector<std::string>& words) {
    for (const CommandTree::Branch& branch : tree.Branches()) {
        const bool isGrouped = !branch.entry->group.empty();
        const size_t place = isGrouped ? 1 : 0;
        if (words.size() <= place || words[place] != branch.entry->name) continue;
        if (!isGrouped || words[0] == branch.entry->group) return &branch;
    }
    return nullptr;
}

bool IsGroup(std::string_view word) {
    for (const CommandGroup& group : CommandGroups())
        if (group.name == word && !CommandTree::NamesIn(group.name).empty()) return true;
    return false;
}

// What a group of commands says when it stands alone: one example of each of its first three commands.
std::string GroupExamples(const CommandTree& tree, std::string_view group) {
    constexpr int kExamples = 3;
    std::string text = "Examples:\n";
    int count = 0;
    for (const CommandTree::Branch& branch : tree.Branches()) {
        if (branch.entry->group != group || count++ == kExamples) continue;
        const std::string_view examples = branch.command->Examples();
        text += examples.substr(0, examples.find('\n') + 1);
    }
    return text + "'vastrelline " + std::string(group) + " --help' lists all its commands.\n";
}

// A command, a group or the tool itself without a word behind it shows how it is used.
std::optional<std::string> ExamplesOf(const CommandTree& tree, const std::vector<std::string>& words) {
    if (words.empty()) return std::string(kFirstSteps) + kAllCommands;
    if (words.size() == 1 && IsGroup(words[0])) return GroupExamples(tree, words[0]);
    const CommandTree::Branch* const branch = FindBranch(tree, words);
    const size_t length = branch == nullptr ? 0 : branch->entry->group.empty() ? 1 : 2;
    if (branch == nullptr || words.size() > length) return std::nullopt;
    const CLI::App& app = *branch->app;
    const std::vector<const CLI::Option*> options =
        app.get_options([](const CLI::Option* option) { return option->get_required(); });
    if (options.empty()) return std::nullopt;  // it needs no more words
    return "Examples:\n" + std::string(branch->command->Examples()) + "'vastrelline " +
           FullName(*branch->entry) + " --help' tells its options.\n";
}

// Unknown commands, which the parser would report as a missing one.
void TestCommandName(const std::vector<std::string>& words) {
    if (words.empty() || words[0].starts_with('-')) return;
    const bool isGroup = IsGroup(words[0]);
    const std::string group = isGroup ? words[0] : std::string();
    if (isGroup && (words.size() < 2 || words[1].starts_with('-'))) return;
    const std::string& name = words[isGroup ? 1 : 0];
    const std::vector<std::string> names = CommandTree::NamesIn(group);
    if (isGroup || !IsGroup(name))
        for (const std::string& known : names)
            if (known == name) return;
    const std::string all = isGroup ? "see vastrelline " + group + " --help" : "see vastrelline --help";
    throw UsageError("there is no command '" + (isGroup ? group + " " : "") + name + "'",
                     DidYouMean(name, names, all));
}

// The first option that the command does not know, as an error with the one that may be meant.
std::optional<UsageError> FindUnknownOption(const CommandTree::Branch& branch,
                                            const std::vector<std::string>& words) {
    std::vector<std::string> known;
    for (const CLI::Option* const option : branch.app->get_options())
        for (const std::string& name : option->get_lnames()) known.push_back("--" + name);
    for (const std::string& word : words) {
        if (!word.starts_with("--") || word == "--") continue;
        const std::string name = word.substr(0, word.find('='));
        if (std::find(known.begin(), known.end(), name) != known.end()) continue;
        return UsageError("there is no option '" + name + "'",
                          DidYouMean(name, known, "see vastrelline " + FullName(*branch.entry) + " --help"));
    }
    return std::nullopt;
}

// "--version" with more words behind it is a command; alone it is a wish for one line.
std::vector<std::string> TakeWords(int argc, const char* const* argv) {
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (words.size() > 1 && words[0] == "--version") words[0] = "version";
    return words;
}

void Parse(CommandTree& tree, const std::vector<std::string>& words) {
    TestCommandName(words);
    try {
        tree.Root().parse(
            std::vector<std::string>(words.rbegin(), words.rend()));  // it takes the last one first
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ParseError& error) {
        const CommandTree::Branch* const branch = FindBranch(tree, words);
        if (branch == nullptr) throw UsageError(error.what(), "see vastrelline --help");
        if (const std::optional<UsageError> unknown = FindUnknownOption(*branch, words)) throw *unknown;
        throw UsageError(error.what(), "see vastrelline " + FullName(*branch->entry) + " --help");
    }
}

// What the tool was asked for, as far as it is known.
struct Asked {
    bool wantsJson = false;
    std::string command;
};

int ReportError(const ToolError& error, const Streams& streams, Messages& messages, const Asked& asked) {
    messages.Fail(error.Where().empty() ? std::string("vastrelline: ") + error.what() : error.what());
    if (asked.wantsJson)
        PrintObject(streams.report, asked.command, error.Code(), {{"error", ErrorJson(error)}});
    return static_cast<int>(error.Code());
}

std::string TypedCommand(const std::vector<std::string>& words) {
    std::string text = "vastrelline";
    for (const std::string& word : words) text.append(" ").append(QuoteForShell(word));
    return text;
}

int Execute(CommandTree& tree, const std::vector<std::string>& words, const ExportCaller& callExport,
            const Streams& streams, Messages& messages) {
    if (tree.IsQuiet()) messages.BeQuiet();
    CommandContext context{
        streams.report,     messages, callExport, tree.WantsJson(), FullName(*tree.Parsed()->entry),
        TypedCommand(words)};
    const ExitCode code = tree.Parsed()->command->Execute(context);
    if (!streams.report.flush()) {
        if (IsReaderGone()) return static_cast<int>(ExitCode::Output);  // nobody is to be told
        throw OutputError({}, "cannot write the report");
    }
    return static_cast<int>(code);
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv, const ExportCaller& callExport,
                   const Streams& streams) {
    Messages messages(streams.errors, streams.isColoured, streams.isTerminal);
    Asked asked;
    const auto fail = [&](const ToolError& error) { return ReportError(error, streams, messages, asked); };
    try {
        const std::vector<std::string> words = TakeWords(argc, argv);
        CommandTree tree;
        if (!words.empty() && words[0] == kCompletionWord) {  // a shell asks; its user is told nothing
            streams.report << AnswerShell(tree.Root(), {words.begin() + 1, words.end()}) << std::flush;
            return static_cast<int>(ExitCode::Well);
        }
        if (const std::optional<std::string> examples = ExamplesOf(tree, words)) {
            messages.Explain(*examples);
            return static_cast<int>(ExitCode::WrongUse);
        }
        for (const std::string& word : words) asked.wantsJson = asked.wantsJson || word == "--json";
        if (const CommandTree::Branch* const branch = FindBranch(tree, words))
            asked.command = FullName(*branch->entry);
        try {
            Parse(tree, words);
        } catch (const CLI::Success& wish) {  // --help and --version
            const int code = tree.Root().exit(wish, streams.report, streams.errors);
            if (!streams.report.flush()) throw OutputError({}, "cannot write the help");
            return code;
        }
        return Execute(tree, words, callExport, streams, messages);
    } catch (const ToolError& error) {
        // What could not be read or done to its end because of the wish to end is no fault of the input.
        return fail(IsCancelled() ? CancelledError() : error);
    } catch (const std::bad_alloc&) {
        return fail(ProcessingError({}, "out of memory"));
    } catch (const std::exception& error) {
        return fail(ProcessingError({}, error.what()));
    }
}

}  // namespace vastrelline
