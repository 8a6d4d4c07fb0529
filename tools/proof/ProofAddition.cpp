// SPDX-License-Identifier: Apache-2.0
#include "proof/ProofAddition.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

#include "files/InputFile.h"
#include "frames/Frame.h"
#include "keys/KeyTable.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "phantom/PhantomFrame.h"
#include "platform/PathText.h"
#include "profile/ProfileFile.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPhantomWord = "phantom";

// All of the text as a number.
template <typename Number>
std::optional<Number> ReadNumber(std::string_view text) {
    Number number{};
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

std::vector<std::string_view> SplitAtColons(std::string_view text) {
    std::vector<std::string_view> parts;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find(':', at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

bool IsPhantom(std::string_view text) {
    return text == kPhantomWord || text.starts_with(std::string(kPhantomWord) + ":");
}

std::string RelativeTo(const ProofManifest& manifest, const std::string& file) {
    InputFileSize(file);  // refuses what is no file
    const fs::path folder = fs::weakly_canonical(fs::absolute(PathOf(manifest.path))).parent_path();
    const fs::path whole = fs::canonical(PathOf(file));
    const fs::path relative = whole.lexically_relative(folder);
    return (relative.empty() ? whole : relative).generic_string();
}

ProofFrame MakeProofFrame(const ProofManifest& manifest, const std::string& text) {
    ProofFrame frame;
    if (IsPhantom(text))
        frame.phantom = ReadPhantomRecipe(text);
    else
        frame.file = RelativeTo(manifest, text);
    return frame;
}

bool IsNamedByHosts(const ProfileFileSection& section) {
    const auto isName = [&](std::string_view name) { return EditDistance(section.name, name) == 0; };
    return section.counts && !section.name.empty() && !section.entries.empty() &&
           !isName(kSensorSectionName) && !isName(kLowSectionName);
}

std::vector<std::string> ListSections(const ProfileFile& profile, const ProofWishes& wishes) {
    std::vector<std::string> sections = wishes.sections;
    if (sections.empty())
        for (const ProfileFileSection& section : profile.Sections())
            if (IsNamedByHosts(section)) sections.push_back(section.name);
    if (sections.empty()) throw InputError(profile.Path(), "has no section that a host may name");
    for (const std::string& section : sections)
        if (const std::optional<MeaninglessRun> meaningless = FindMeaninglessRun(profile, section))
            throw ToolError(ExitCode::WrongUse, profile.Path(), meaningless->finding.text);
    return sections;
}

ExportKind ChooseProofExport(const ProfileFile& profile, const std::string& section,
                             const ProofWishes& wishes) {
    if (wishes.exportName.empty()) return ChooseExport(profile, section, {});
    return FindExport(wishes.exportName)->kind;
}

void TestIsNew(const ProofManifest& manifest, const ProofEntry& entry) {
    const bool isThere =
        std::any_of(manifest.entries.begin(), manifest.entries.end(), [&](const ProofEntry& each) {
            return each.frame == entry.frame && each.profile == entry.profile &&
                   each.section == entry.section && each.exportKind == entry.exportKind;
        });
    if (isThere)
        throw UsageError("the manifest has such an entry: " + NameProofEntry(entry),
                         "--update --reason changes it");
}

}  // namespace

PhantomRecipe ReadPhantomRecipe(std::string_view text) {
    constexpr const char* kRemedy = "write it as in phantom:1300x1668:0.12:7, with size, dose and seed";
    const std::vector<std::string_view> parts = SplitAtColons(text);
    constexpr size_t kMostParts = 4;
    PhantomRecipe phantom{{1300, 1668}, 1.0, 1};
    const auto refuse = [&] { throw UsageError("'" + std::string(text) + "' is no phantom", kRemedy); };
    if (parts.front() != kPhantomWord || parts.size() > kMostParts) refuse();
    if (parts.size() > 1) {
        const std::optional<FrameSize> size = ParseFrameSize(parts[1]);
        if (!size || PixelCount(size->width, size->height) > kMostPhantomPixels) refuse();
        phantom.size = size.value_or(phantom.size);
    }
    if (parts.size() > 2) {
        const std::optional<double> dose = ReadNumber<double>(parts[2]);
        if (!dose || !(*dose > 0.0 && *dose <= kMostPhantomDose)) refuse();
        phantom.dose = dose.value_or(phantom.dose);
    }
    if (parts.size() > 3) {
        const std::optional<uint32_t> seed = ReadNumber<uint32_t>(parts[3]);
        if (!seed) refuse();
        phantom.seed = seed.value_or(0);
    }
    return phantom;
}

void AddProofEntries(ProofManifest& manifest, const ProofWishes& wishes) {
    if (!wishes.exportName.empty() && FindExport(wishes.exportName) == nullptr)
        throw UsageError("there is no export '" + wishes.exportName + "'", "see vastrelline run --help");
    for (const std::string& path : wishes.profiles) {
        const ProfileFile profile = ProfileFile::Read(path);
        const std::vector<std::string> sections = ListSections(profile, wishes);
        for (const std::string& section : sections)
            for (const std::string& frame : wishes.frames) {
                ProofEntry entry;
                entry.frame = MakeProofFrame(manifest, frame);
                entry.profile = RelativeTo(manifest, path);
                entry.section = section;
                entry.exportKind = ChooseProofExport(profile, section, wishes);
                TestIsNew(manifest, entry);
                manifest.entries.push_back(std::move(entry));
            }
    }
}

}  // namespace vastrelline
