// SPDX-License-Identifier: Apache-2.0
#include "commands/HelpFormat.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace vastrelline {
namespace {

constexpr size_t kWordColumn = 28;

// Whether an option must be there is told by its group.
class HelpFormat : public CLI::Formatter {
public:
    HelpFormat() {
        column_width(kWordColumn);
        label("Positionals", "Arguments");
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        return WrapText(option->get_description(), kHelpWidth - kWordColumn);
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        if (option->get_type_size() == 0 || option->get_type_name().empty()) return {};
        const std::string defaultText = option->get_default_str();
        return " " + option->get_type_name() + (defaultText.empty() ? "" : "=" + defaultText);
    }
};

}  // namespace

std::string WrapText(std::string_view text, size_t width) {
    std::string wrapped;
    size_t lineLength = 0;
    while (!text.empty()) {
        const size_t end = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (word.empty()) continue;
        const bool isFirst = lineLength == 0;
        const bool fits = isFirst || lineLength + 1 + word.size() <= width;
        if (!isFirst) wrapped += fits ? ' ' : '\n';
        wrapped += word;
        lineLength = fits && !isFirst ? lineLength + 1 + word.size() : word.size();
    }
    return wrapped;
}

std::shared_ptr<CLI::FormatterBase> MakeHelpFormat() { return std::make_shared<HelpFormat>(); }

}  // namespace vastrelline
