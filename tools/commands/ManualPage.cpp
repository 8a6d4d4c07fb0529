// SPDX-License-Identifier: Apache-2.0
#include "commands/ManualPage.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace vastrelline {
namespace {

// The day of the last change that readers of the page should notice.
constexpr const char* kDate = "November 22, 2026";

constexpr size_t kLineBytes = 78;

constexpr const char* kHead =
    ".Dt VASTRELLINE 1\n"
    ".Os\n"
    ".Sh NAME\n"
    ".Nm vastrelline\n"
    ".Nd turn raw frames of intra-oral X-ray sensors into diagnostic images\n"
    ".Sh SYNOPSIS\n"
    ".Nm\n"
    ".Ar command\n"
    ".Op Ar argument ...\n"
    ".Nm\n"
    ".Ar command\n"
    ".Fl -help\n"
    ".Nm\n"
    ".Fl -version\n"
    ".Sh DESCRIPTION\n";

constexpr const char* kTail =
    ".Sh ENVIRONMENT\n"
    ".Bl -tag -width Ds\n"
    ".It Ev NO_COLOR\n"
    "Not empty: no colours on a terminal.\n"
    ".It Ev COLUMNS\n"
    "Width of the terminal, for tables.\n"
    ".It Ev TMPDIR\n"
    "Where runs keep their private copies while they last.\n"
    ".El\n"
    ".Sh FILES\n"
    "A profile is a text of sections, keys and values.\n"
    "No command changes the one that it is given, but for\n"
    ".Cm profile set ,\n"
    ".Cm profile lint Fl -fix\n"
    "and\n"
    ".Cm run Fl -in-place .\n"
    "Results are written beside their names and renamed when they are whole, and\n"
    "replace nothing without\n"
    ".Fl -force .\n"
    "The name of a raw frame may tell its size, as in\n"
    ".Pa tooth_1300x1668.raw .\n"
    ".Sh EXIT STATUS\n"
    ".Bl -tag -width Ds -compact\n"
    ".It 0\n"
    "All went well.\n"
    ".It 1\n"
    "Frames differ, or there are findings.\n"
    ".It 2\n"
    "Wrong use: the command line asks for something that cannot be.\n"
    ".It 3\n"
    "A frame, profile or other input cannot be read or makes no sense.\n"
    ".It 4\n"
    "The processing failed.\n"
    ".It 5\n"
    "A result could not be written.\n"
    ".It 130\n"
    "The command was cancelled.\n"
    ".El\n";

void Add(std::string& page, std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) page.append(part);
}

std::string FullName(const CommandEntry& entry) {
    return (entry.group.empty() ? std::string() : std::string(entry.group) + " ") + std::string(entry.name);
}

bool IsHidden(const CLI::Option& option) { return option.get_group().empty(); }
bool TakesSeveral(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

// "WxH" of "--size WxH"; what is behind a colon and a brace are the values that are taken.
std::string TypeOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(":{"));
}

void AddSynopsis(const CommandTree::Branch& branch, std::string& page) {
    Add(page, {".Nm Cm ", FullName(*branch.entry), "\n"});
    for (const CLI::Option* const option : branch.app->get_options()) {
        if (IsHidden(*option)) continue;
        const std::string several = TakesSeveral(*option) && option->get_positional() ? " ..." : "";
        if (option->get_positional())
            Add(page, {option->get_required() ? ".Ar " : ".Op Ar ", EscapeForMdoc(option->get_name()),
                       several, "\n"});
        else if (option->get_required())
            Add(page, {".Fl -", option->get_lnames().front(), " Ar ", EscapeForMdoc(TypeOf(*option)), "\n"});
    }
    page += ".Op Ar options\n";
}

void AddOption(const CLI::Option& option, std::string& page) {
    page += ".It";
    if (option.get_positional()) {
        Add(page, {" Ar ", EscapeForMdoc(option.get_name())});
    } else {
        std::string separator = " ";
        for (const std::string& name : option.get_snames()) {
            Add(page, {separator, "Fl ", name});
            separator = " , ";
        }
        for (const std::string& name : option.get_lnames()) {
            Add(page, {separator, "Fl -", name});
            separator = " , ";
        }
        if (option.get_items_expected_max() > 0) Add(page, {" Ar ", EscapeForMdoc(TypeOf(option))});
    }
    std::string text = option.get_description();
    const std::string type = option.get_type_name();
    if (const size_t open = type.find('{'), close = type.find('}'); close != std::string::npos) {
        text += ": one of";
        for (const char c : type.substr(open, close - open))
            text += c == '{' ? " " : c == ',' ? ", " : std::string(1, c);
    }
    if (!text.empty() && !text.ends_with('.')) text += '.';
    Add(page, {"\n", WrapForMdoc(text)});
}

void AddLiteral(std::string_view text, std::string& page) {
    page += ".Bd -literal\n";
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        if (line.starts_with("  ")) line.remove_prefix(2);
        Add(page, {EscapeForMdoc(line), "\n"});
        at = end + 1;
    }
    page += ".Ed\n";
}

void AddCommand(const CommandTree::Branch& branch, std::string& page) {
    Add(page, {".Ss ", FullName(*branch.entry), "\n"});
    AddSynopsis(branch, page);
    Add(page, {".Pp\n", WrapForMdoc(std::string(branch.entry->summary) + ".")});
    if (!branch.command->Notes().empty()) page += WrapForMdoc(branch.command->Notes());
    page += ".Bl -tag -width Ds\n";
    for (const CLI::Option* const option : branch.app->get_options())
        if (!IsHidden(*option)) AddOption(*option, page);
    page += ".El\n.Pp\nExamples:\n";
    AddLiteral(branch.command->Examples(), page);
}

}  // namespace

std::string EscapeForMdoc(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '\\':
                escaped += "\\e";
                break;
            case '-':
                escaped += "\\-";
                break;
            case '"':
                escaped += "\\(dq";
                break;
            case '\'':
                escaped += "\\(aq";
                break;
            case '`':
                escaped += "\\(ga";
                break;
            case '^':
                escaped += "\\(ha";
                break;
            case '~':
                escaped += "\\(ti";
                break;
            default:
                escaped += c;
        }
    }
    return escaped.starts_with('.') ? "\\&" + escaped : escaped;
}

std::string WrapForMdoc(std::string_view text) {
    std::string lines;
    std::string line;
    const auto end = [&] {
        if (!line.empty()) lines += line + "\n";
        line.clear();
    };
    for (size_t at = 0; at < text.size();) {
        const size_t start = text.find_first_not_of(" \n\t", at);
        if (start == std::string_view::npos) break;
        const size_t stop = std::min(text.find_first_of(" \n\t", start), text.size());
        const std::string_view plain = text.substr(start, stop - start);
        const std::string word = EscapeForMdoc(plain);
        if (!line.empty() && line.size() + 1 + word.size() > kLineBytes) end();
        line += (line.empty() ? "" : " ") + word;
        const bool isSentenceEnd =
            plain.ends_with('.') || plain.ends_with('?') || plain.ends_with('!') || plain.ends_with(".)");
        if (isSentenceEnd) end();
        at = stop;
    }
    end();
    return lines;
}

std::string MakeManualPage(const CommandTree& tree) {
    std::string page = ".\\\" Made by 'vastrelline man' of the tool's table of commands.\n";
    Add(page, {".Dd ", kDate, "\n", kHead, WrapForMdoc(tree.Root().get_description())});
    page += ".Sh COMMANDS\n";
    for (const CommandTree::Branch& branch : tree.Branches()) AddCommand(branch, page);
    page += kTail;
    page += ".Sh EXAMPLES\n";
    AddLiteral(kFirstSteps.substr(kFirstSteps.find('\n') + 1), page);
    return page;
}

}  // namespace vastrelline
