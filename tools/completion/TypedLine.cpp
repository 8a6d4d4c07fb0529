// SPDX-License-Identifier: Apache-2.0
#include "completion/TypedLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>

namespace vastrelline {
namespace {

const CLI::Option* FindOption(const CLI::App& command, const std::string& word) {
    const bool isLong = word.starts_with("--");
    const std::string name = word.substr(isLong ? 2 : 1);
    for (const CLI::Option* const option : command.get_options()) {
        const std::vector<std::string>& names = isLong ? option->get_lnames() : option->get_snames();
        if (std::find(names.begin(), names.end(), name) != names.end()) return option;
    }
    return nullptr;
}

const CLI::App* FindSubcommand(const CLI::App& command, const std::string& word) {
    for (const CLI::App* const each : command.get_subcommands(nullptr))
        if (each->get_name() == word) return each;
    return nullptr;
}

bool IsOption(const std::string& word) { return word.size() > 1 && word.front() == '-'; }

std::string LongName(const CLI::Option& option) {
    return option.get_lnames().empty() ? option.get_name() : option.get_lnames().front();
}

class Reader {
public:
    explicit Reader(const CLI::App& root) { line_.command = &root; }

    void Take(const std::string& word) {
        if (line_.pending != nullptr) {
            line_.values[LongName(*line_.pending)] = word;
            if (--valuesLeft_ <= 0) line_.pending = nullptr;
        } else if (line_.isOptionsEnd || !IsOption(word)) {
            TakeArgument(word);
        } else if (word == "--") {
            line_.isOptionsEnd = true;
        } else {
            TakeOption(word);
        }
    }

    TypedLine End(const std::string& current) {
        line_.current = current;
        const size_t equals = current.find('=');
        if (line_.pending == nullptr && !line_.isOptionsEnd && current.starts_with("--") &&
            equals != std::string::npos) {
            line_.pending = FindOption(*line_.command, current.substr(0, equals));
            line_.valuePrefix = current.substr(0, equals + 1);
            line_.current = current.substr(equals + 1);
        }
        return std::move(line_);
    }

private:
    void TakeArgument(const std::string& word) {
        const CLI::App* const next = line_.arguments.empty() ? FindSubcommand(*line_.command, word) : nullptr;
        if (next != nullptr)
            line_.command = next;
        else
            line_.arguments.push_back(word);
    }

    void TakeOption(const std::string& word) {
        const size_t equals = word.find('=');
        const CLI::Option* const option = FindOption(*line_.command, word.substr(0, equals));
        if (option == nullptr) return;
        line_.given.push_back(option);
        if (equals != std::string::npos) {
            line_.values[LongName(*option)] = word.substr(equals + 1);
        } else if (option->get_items_expected_max() > 0) {
            line_.pending = option;
            valuesLeft_ = option->get_items_expected_min();
        }
    }

    TypedLine line_;
    int valuesLeft_ = 0;
};

}  // namespace

TypedLine ReadTypedLine(const CLI::App& root, const std::vector<std::string>& words,
                        const std::string& current) {
    Reader reader(root);
    for (const std::string& word : words) reader.Take(word);
    return reader.End(current);
}

const CLI::Option* NextArgument(const TypedLine& line) {
    size_t left = line.arguments.size();
    for (const CLI::Option* const option : line.command->get_options()) {
        if (!option->get_positional()) continue;
        const auto most = static_cast<size_t>(std::max(option->get_items_expected_max(), 1));
        if (left < most) return option;
        left -= most;
    }
    return nullptr;
}

}  // namespace vastrelline
