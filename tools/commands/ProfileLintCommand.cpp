// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileLintCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "commands/JsonObject.h"
#include "lint/LintFixes.h"
#include "lint/LintRules.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/ProfileStore.h"

namespace vastrelline {
namespace {

struct Counts {
    size_t errors = 0;
    size_t warnings = 0;
    size_t notes = 0;
    size_t fixable = 0;
    size_t fixes = 0;

    size_t& Of(Severity severity) {
        if (severity == Severity::Note) return notes;
        return severity == Severity::Warning ? warnings : errors;
    }
};

// A file that could not be read counts more than what was found in others.
ExitCode EndOf(ExitCode reading, const Counts& counts) {
    if (reading != ExitCode::Well) return reading;
    return counts.errors + counts.warnings > 0 ? ExitCode::Findings : ExitCode::Well;
}

Counts CountAll(const std::vector<LintedFile>& files) {
    Counts counts;
    for (const LintedFile& file : files) {
        counts.fixes += file.fixCount;
        for (const LintFinding& each : file.findings) {
            ++counts.Of(each.finding.severity);
            if (each.fix) ++counts.fixable;
        }
    }
    return counts;
}

std::string Number(size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// "2 warnings and 1 note"; empty without any.
std::string Findings(const Counts& counts) {
    std::vector<std::string> parts;
    if (counts.errors > 0) parts.push_back(Number(counts.errors, "error"));
    if (counts.warnings > 0) parts.push_back(Number(counts.warnings, "warning"));
    if (counts.notes > 0) parts.push_back(Number(counts.notes, "note"));
    std::string text;
    for (size_t i = 0; i < parts.size(); ++i)
        text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
    return text;
}

std::string Summary(const Counts& counts, size_t fileCount) {
    std::string text = counts.fixes > 0 ? Number(counts.fixes, "line") + " mended; " : "";
    const std::string findings = Findings(counts);
    if (!findings.empty())
        text += findings + " in " + Number(fileCount, "file");
    else
        text += fileCount == 1 ? "nothing to say" : "nothing to say of " + Number(fileCount, "file");
    if (counts.fixable > 0) text += "; --fix mends " + std::to_string(counts.fixable) + " of them";
    return text;
}

}  // namespace

std::string_view ProfileLintCommand::Examples() const {
    return "  vastrelline profile lint dental.ini\n"
           "  vastrelline profile lint dental.ini --section General --fix\n"
           "  vastrelline profile lint *.ini --sarif > findings.sarif\n";
}

std::string_view ProfileLintCommand::Notes() const {
    return "Reads each profile as the library does and tells, line by line, what a run would not read, read "
           "in\n"
           "another way, or survive without making a picture. docs/profile-rules.md explains the rules, "
           "whose\n"
           "names stand in brackets. A note is no fault. --fix changes what is certain and nothing else.\n"
           "Exit code: 0 nothing but notes, 1 warnings or errors, 3 a file that cannot be read.\n";
}

void ProfileLintCommand::AddOptions(CLI::App& command) {
    command.add_option("FILE", files_, "A profile, or several")->required()->type_name("");
    command.add_option("--section", section_, "Look at this section only")->type_name("NAME");
    command.add_flag("--fix", isFixing_, "Mend what is certain, in place; all other bytes stay");
    command.add_flag("--sarif", wantsSarif_, "Print a SARIF 2.1.0 log, for code hosts and editors");
}

LintedFile ProfileLintCommand::LintFile(const std::string& path) const {
    LintedFile linted{path, {}, std::nullopt, 0};
    ProfileFile file = ProfileFile::Read(path);
    if (isFixing_) {
        FixedProfile fixed = FixProfile(path, file.Text().Bytes(), section_);
        if (fixed.count > 0) ReplaceProfileFile(path, file.Text().Bytes(), fixed.bytes);
        linted.fixCount = fixed.count;
        file = ProfileFile(path, std::move(fixed.bytes));
    }
    linted.findings = LintProfile(file, section_);
    return linted;
}

ExitCode ProfileLintCommand::Execute(CommandContext& context) {
    if (wantsSarif_ && context.wantsJson) throw UsageError("--json and --sarif are two forms", "choose one");
    std::vector<LintedFile> files;
    ExitCode code = ExitCode::Well;
    for (const std::string& path : files_) {
        try {
            files.push_back(LintFile(path));
        } catch (const ToolError& error) {
            // The other files can still be looked at.
            context.messages.Fail(error.what());
            files.push_back({path, {}, error, 0});
            code = std::max(code, error.Code());
        }
    }
    const Counts counts = CountAll(files);
    if (context.wantsJson) {
        PrintObject(context, EndOf(code, counts), LintToJson(files));
    } else if (wantsSarif_) {
        context.report << FormatLintSarif(files);
    } else {
        for (const LintedFile& file : files)
            for (const LintFinding& each : file.findings)
                context.report << OneLine(FormatFinding(each.finding)) << '\n';
        context.report.flush();
    }
    if (code == ExitCode::Well || files.size() > 1) context.messages.Tell(Summary(counts, files.size()));
    return EndOf(code, counts);
}

}  // namespace vastrelline
