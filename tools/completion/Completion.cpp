// SPDX-License-Identifier: Apache-2.0
#include "completion/Completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "completion/ProfileCandidates.h"
#include "completion/TypedLine.h"
#include "library/ExportRequest.h"
#include "profile/SampleProfiles.h"

namespace vastrelline {
namespace {

// What a value is, by the names that the commands give their options and arguments.
enum class ValueKind : uint8_t { Other, File, Folder, Section, Key, Setting, Export, Sample, Choice };

std::string NameOf(const CLI::Option& option) {
    return option.get_lnames().empty() ? option.get_name() : option.get_lnames().front();
}

// The words between braces in the type of an option that takes one of a list.
std::vector<Candidate> ChoicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const size_t open = type.find('{');
    const size_t close = type.find('}');
    std::vector<Candidate> choices;
    if (open == std::string::npos || close == std::string::npos) return choices;
    for (size_t at = open + 1; at < close;) {
        const size_t end = std::min(type.find(',', at), close);
        choices.push_back({type.substr(at, end - at), {}});
        at = end + 1;
    }
    return choices;
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

ValueKind KindOf(const CLI::Option& option) {
    const std::string name = NameOf(option);
    if (!ChoicesOf(option).empty()) return ValueKind::Choice;
    if (name == "section") return ValueKind::Section;
    if (name == "export") return ValueKind::Export;
    if (name == "sample") return ValueKind::Sample;
    if (name == "KEY") return ValueKind::Key;
    if (name == "KEY=VALUE" || name == "set") return ValueKind::Setting;
    if (IsOneOf(option.get_type_name(), {"FOLDER", "DIR"})) return ValueKind::Folder;
    if (option.get_positional() ||
        IsOneOf(option.get_type_name(), {"FILE", "PICTURE", "PROFILE", "PNG", "FRAME", "LIBRARY"}))
        return ValueKind::File;
    return ValueKind::Other;
}

// The profile that the line names: by --profile, or where the command has no such option as its first
// argument.
std::string ProfileOf(const TypedLine& line) {
    const std::vector<const CLI::Option*> options = line.command->get_options();
    const bool hasOption = std::any_of(options.begin(), options.end(), [](const CLI::Option* option) {
        return NameOf(*option) == "profile";
    });
    if (hasOption) {
        const auto found = line.values.find("profile");
        return found == line.values.end() ? std::string() : found->second;
    }
    return line.arguments.empty() ? std::string() : line.arguments.front();
}

std::string SectionOf(const TypedLine& line) {
    const auto found = line.values.find("section");
    return found == line.values.end() ? std::string() : found->second;
}

// Sections of the profile; behind the colon of an option that takes a pair, those of a second profile if the
// line names one.
std::vector<Candidate> ListSectionsFor(const TypedLine& line, const CLI::Option& option) {
    std::vector<Candidate> first = ListSections(ProfileOf(line));
    const size_t colon = line.current.find(':');
    const bool isSecond =
        option.get_type_name().find(':') != std::string::npos && colon != std::string::npos &&
        std::none_of(first.begin(), first.end(),
                     [&](const Candidate& each) { return each.text.starts_with(line.current); });
    if (!isSecond) return first;
    std::vector<Candidate> pairs = line.arguments.size() < 2 ? first : ListSections(line.arguments[1]);
    for (Candidate& pair : pairs) pair.text.insert(0, line.current.substr(0, colon + 1));
    return pairs;
}

void AddKeys(const TypedLine& line, bool isSetting, Completion& completion) {
    completion.candidates = ListSectionKeys(ProfileOf(line), SectionOf(line));
    if (completion.candidates.empty()) completion.candidates = ListKnownKeys();
    if (!isSetting) return;
    for (Candidate& candidate : completion.candidates) candidate.text += '=';
    completion.goesOn = true;
}

void AddValues(const TypedLine& line, const CLI::Option& option, Completion& completion) {
    const ValueKind kind = KindOf(option);
    switch (kind) {
        case ValueKind::Choice:
            completion.candidates = ChoicesOf(option);
            break;
        case ValueKind::Section:
            completion.candidates = ListSectionsFor(line, option);
            break;
        case ValueKind::Export:
            for (const ExportTraits& traits : AllExports())
                completion.candidates.push_back({std::string(traits.name), {}});
            break;
        case ValueKind::Sample:
            for (const SampleProfile& sample : SampleProfiles())
                completion.candidates.push_back({std::string(sample.name), {}});
            break;
        case ValueKind::Key:
        case ValueKind::Setting:
            AddKeys(line, kind == ValueKind::Setting, completion);
            break;
        case ValueKind::File:
        case ValueKind::Folder:
            completion.files = kind == ValueKind::File ? FileWish::Files : FileWish::Folders;
            completion.filePrefix = line.valuePrefix;
            break;
        case ValueKind::Other:
            break;
    }
    for (Candidate& candidate : completion.candidates) candidate.text.insert(0, line.valuePrefix);
}

void AddOptions(const TypedLine& line, Completion& completion) {
    for (const CLI::Option* const option : line.command->get_options()) {
        const bool isGiven = std::find(line.given.begin(), line.given.end(), option) != line.given.end();
        if (isGiven || option->get_group().empty()) continue;  // an option without a group is hidden
        for (const std::string& name : option->get_lnames())
            completion.candidates.push_back({"--" + name, option->get_description()});
    }
}

void AddSubcommands(const TypedLine& line, Completion& completion) {
    for (const CLI::App* const each : line.command->get_subcommands(nullptr))
        if (!each->get_group().empty())
            completion.candidates.push_back({each->get_name(), each->get_description()});
}

}  // namespace

Completion CompleteWords(const CLI::App& root, const std::vector<std::string>& words,
                         const std::string& current) {
    const TypedLine line = ReadTypedLine(root, words, current);
    Completion completion;
    if (line.pending != nullptr) {
        AddValues(line, *line.pending, completion);
    } else if (!line.isOptionsEnd && line.current.starts_with('-') && line.valuePrefix.empty()) {
        AddOptions(line, completion);
    } else if (line.valuePrefix.empty()) {
        if (line.arguments.empty()) AddSubcommands(line, completion);
        if (const CLI::Option* const argument = NextArgument(line)) AddValues(line, *argument, completion);
        // Behind the last argument there are options only.
        if (completion.candidates.empty() && completion.files == FileWish::None && !line.isOptionsEnd)
            AddOptions(line, completion);
    }
    std::erase_if(completion.candidates, [&](const Candidate& candidate) {
        return !candidate.text.starts_with(line.valuePrefix + line.current);
    });
    return completion;
}

}  // namespace vastrelline
