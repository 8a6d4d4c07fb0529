// SPDX-License-Identifier: Apache-2.0
#include "commands/SectionChoice.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "platform/OwnProcess.h"
#include "profile/MissingSection.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {

namespace {

std::string JoinNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

}  // namespace

ExportKind ChooseNamedExport(const ProfileFile& file, std::string_view section, std::string_view exportName) {
    if (exportName.empty()) return ChooseExport(file, section, {});
    if (const ExportTraits* const traits = FindExport(exportName)) return traits->kind;
    std::vector<std::string> names;
    for (const ExportTraits& traits : AllExports()) names.emplace_back(traits.name);
    throw UsageError("there is no export '" + std::string(exportName) + "'",
                     DidYouMean(exportName, names, "there are " + JoinNames(names)));
}

SectionPlan PlanNamedSection(const ProfileFile& file, const std::string& section,
                             std::string_view exportName) {
    const std::vector<std::string> names = file.SectionNames();
    if (names.empty())
        throw InputError(file.Path(), "holds no section", "'vastrelline profile new' makes a profile");
    if (section.empty() || file.FindSection(section) == nullptr) throw MissingSection(file, section);
    return MakeSectionPlan(file, section, ChooseNamedExport(file, section, exportName));
}

size_t TerminalWidth() {
    constexpr size_t kUsual = 80;
    constexpr size_t kNarrowest = 40;
    constexpr size_t kWidest = 200;
    const std::string text = EnvironmentText("COLUMNS").value_or("");
    size_t width = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), width).ec != std::errc()) return kUsual;
    return std::clamp(width, kNarrowest, kWidest);
}

}  // namespace vastrelline
