#include "commands/SectionChoice.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <span>
#include <vector>

#include "keys/KeyTable.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"

namespace vastrelline {

namespace {

constexpr int32_t kListedMode = 2;
constexpr int32_t kDecidingMode = 3;
constexpr std::string_view kStem = "ImageProcessing";

std::string_view EndOf(std::string_view name) {
    name.remove_prefix(kStem.size());
    return name.starts_with('_') ? name.substr(1) : name;
}

bool IsNamed(const ExportTraits& traits, std::string_view name) {
    const std::string_view end = EndOf(traits.name);
    return IsSameKeyName(traits.name, name) || (!end.empty() && IsSameKeyName(end, name));
}

std::string JoinNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

}  // namespace

ExportKind ChooseNamedExport(const ProfileFile& file, std::string_view section, std::string_view exportName) {
    if (exportName.empty()) {
        const bool decides = ReadIntegerKey(file, section, "PROCMODE", kListedMode) == kDecidingMode;
        return decides ? ExportKind::S : ExportKind::Plain;
    }
    std::vector<std::string> names;
    for (const ExportTraits& traits : AllExports()) {
        if (IsNamed(traits, exportName)) return traits.kind;
        names.emplace_back(traits.name);
    }
    throw UsageError("there is no export '" + std::string(exportName) + "'",
                     DidYouMean(exportName, names, "there are " + JoinNames(names)));
}

SectionPlan PlanNamedSection(const ProfileFile& file, const std::string& section,
                             std::string_view exportName) {
    const std::vector<std::string> names = file.SectionNames();
    if (names.empty())
        throw InputError(file.Path(), "holds no section", "'vastrelline profile new' makes a profile");
    if (section.empty() || file.FindSection(section) == nullptr)
        throw UsageError(file.Path() + " has no section '" + section + "'",
                         DidYouMean(section, names, "it has " + JoinNames(names)));
    return MakeSectionPlan(file, section, ChooseNamedExport(file, section, exportName));
}

size_t TerminalWidth() {
    constexpr size_t kUsual = 80;
    constexpr size_t kNarrowest = 40;
    constexpr size_t kWidest = 200;
    const char* const columns = std::getenv("COLUMNS");  // NOLINT(concurrency-mt-unsafe): one thread
    if (columns == nullptr) return kUsual;
    const std::string_view text = columns;
    size_t width = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), width).ec != std::errc()) return kUsual;
    return std::clamp(width, kNarrowest, kWidest);
}

}  // namespace vastrelline
