// SPDX-License-Identifier: Apache-2.0
#include "commands/RunPreparation.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "files/FileKind.h"
#include "messages/ToolError.h"
#include "platform/OwnProcess.h"
#include "platform/PathText.h"
#include "runs/LookAtFrame.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {

ProfileFile ReadRunProfile(const RunOptions& options) {
    std::string path = options.profile;
    std::error_code ignored;
    const bool isForeign = std::filesystem::path::preferred_separator == '/';
    if (isForeign && !std::filesystem::exists(PathOf(path), ignored))
        std::replace(path.begin(), path.end(), '\\', '/');
    return ProfileFile::Read(path);
}

void TestMeaning(const ProfileFile& file, const RunOptions& options, std::vector<Finding>& findings) {
    std::optional<MeaninglessRun> meaningless = FindMeaninglessRun(file, options.section);
    if (!meaningless) return;
    if (options.forceSection) {
        meaningless->finding.severity = Severity::Warning;
        findings.push_back(std::move(meaningless->finding));
        return;
    }
    const ExitCode code = meaningless->isSectionWrong ? ExitCode::WrongUse : ExitCode::Input;
    const std::string& text = meaningless->finding.text;
    const size_t end = std::min(text.rfind("; "), text.size());
    std::string remedy = text.substr(std::min(end + 2, text.size()));
    remedy += remedy.ends_with('?') ? " " : "; ";
    throw ToolError(code, file.Path(), text.substr(0, end), remedy + "--force-section runs all the same");
}

const ExportTraits* FindNamedTraits(const RunOptions& options) {
    if (!options.exportName.empty()) return FindExport(options.exportName);
    return options.hasSensor ? &TraitsOf(ExportKind::NE) : nullptr;
}

const ExportTraits& FindTraits(const ProfileFile& file, const RunOptions& options) {
    if (const ExportTraits* const named = FindNamedTraits(options)) return *named;
    const ExportWishes wishes{FileKindOf(options.picture) == FileKind::Bmp, !options.geometry.empty(),
                              options.hasSensor};
    return TraitsOf(ChooseExport(file, options.section, wishes));
}

ExportRequest MakeCall(const RunOptions& options, const ExportTraits& traits, const Frame& frame) {
    ExportRequest call;
    call.kind = traits.kind;
    call.frame = frame;
    call.applyMapping = options.applyMapping;
    call.applySpotCorrection = options.applySpotCorrection;
    call.sensorFolder = options.sensorFolder;
    call.sensorMode = options.sensorMode;
    if (options.hasTimeout)
        call.timeout = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::duration<double>(options.timeoutSeconds));
    if (!options.geometry.empty()) {
        call.geometry.emplace();
        std::copy(options.geometry.begin(), options.geometry.end(), call.geometry->begin());
    }
    return call;
}

std::vector<Finding> LookBeforeRun(const RunOptions& options, const LoadedFrame& frame,
                                   const ProfileFile& file, const SectionPlan& plan,
                                   const ExportTraits& traits) {
    std::vector<Finding> findings;
    const auto append = [&](std::vector<Finding> more) {
        std::move(more.begin(), more.end(), std::back_inserter(findings));
    };
    for (const std::string& note : frame.notes)
        findings.push_back({Severity::Note, options.frame, 0, 1, note, ""});
    append(LookAtFrame({options.frame, frame.frame, frame.sourceBits}, file, plan.section));
    append(LookAtProfile(file, plan, traits));
    return findings;
}

void TestCode(const FrameRun& run, const ExportTraits& traits) {
    if (run.code == 0) return;
    const std::string what = std::string(traits.name) + " returned " + std::to_string(run.code) + " (" +
                             std::string(ExportCodeText(run.code)) + ")";
    if (IsBitmapFailure(run.code)) throw OutputError({}, what, kTemporaryFolderHint);
    throw ProcessingError({}, what, "no picture was written");
}

}  // namespace vastrelline
