// SPDX-License-Identifier: Apache-2.0
#include "commands/VerifyCommand.h"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "commands/JsonObject.h"
#include "commands/VerifyReport.h"
#include "files/InputFile.h"
#include "files/OutputFile.h"
#include "files/Sha256.h"
#include "library/LibraryFile.h"
#include "messages/ToolError.h"
#include "messages/UtcTime.h"
#include "platform/Machine.h"
#include "platform/PathText.h"
#include "proof/ProofSuite.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

std::vector<uint8_t> BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

// "Linux x86_64"
std::string Platform() {
    const MachineNames names = AskMachine();
    return names.system.empty() ? std::string() : names.system + " " + names.architecture;
}

void Sign(ProofManifest& manifest, const std::string& libraryHash) {
    manifest.version = VASTRELLINE_VERSION;
    manifest.platform = Platform();
    manifest.libraryHash = libraryHash;
}

// Hash of the manifest's file; none: there is no file.
std::optional<std::string> StateOf(const std::string& path, bool isMissing) {
    return isMissing ? std::nullopt : std::optional(Sha256OfFile(path));
}

// Replaces the file only as it was read: another addition meanwhile would be lost.
void Write(const ProofManifest& manifest, const std::optional<std::string>& read) {
    OutputFile file(manifest.path, read.has_value());
    if (read && Sha256OfFile(manifest.path) != *read)
        throw OutputError(manifest.path, "has changed meanwhile", "do the same again");
    file.Write(BytesOf(FormatProofManifest(manifest)));
    file.Publish();
}

std::vector<const ProofEntry*> PointersTo(const std::vector<ProofEntry>& entries, size_t first) {
    std::vector<const ProofEntry*> pointers;
    for (size_t i = first; i < entries.size(); ++i) pointers.push_back(&entries[i]);
    return pointers;
}

// What the entries give now becomes what they should give. Whether there was anything to change.
bool TakeResults(ProofManifest& manifest, size_t first, const std::vector<EntryResult>& results,
                 const std::string& reason) {
    bool isChanged = false;
    for (size_t i = 0; i < results.size(); ++i) {
        if (results[i].verdict.state == ProofState::Equal) continue;
        ProofEntry& entry = manifest.entries[first + i];
        if (entry.facts)
            entry.history.push_back({UtcDay(), reason, VASTRELLINE_VERSION, std::move(*entry.facts)});
        entry.facts = results[i].outcome.facts;
        isChanged = true;
    }
    return isChanged;
}

}  // namespace

std::string_view VerifyCommand::Examples() const {
    return "  vastrelline verify manifest.json\n"
           "  vastrelline verify manifest.json --add --frame tooth.png --frame phantom --profile dental.ini\n"
           "  vastrelline verify manifest.json --update --reason 'CLAHE rounds its last tile as the "
           "others'\n";
}

std::string_view VerifyCommand::Notes() const {
    return "A manifest holds the SHA-256 of the pixels after every stage, of frame and profile. Each entry "
           "runs in\n"
           "a process of its own. Exit code 1: something differs, and the first stage that does is named; 3 "
           "and\n"
           "above: something could not be read or run. An update keeps the old hashes with date and "
           "reason.\n";
}

void VerifyCommand::AddOptions(CLI::App& command) { AddVerifyOptions(command, options_); }

ExitCode VerifyCommand::Execute(CommandContext& context) {
    TestVerifyOptions(options_);
    std::optional<OutputFile> junit;
    if (!options_.junit.empty()) junit.emplace(options_.junit, options_.mayReplace);

    ProofManifest manifest;
    std::error_code error;
    const bool isMissing = !fs::exists(PathOf(options_.manifest), error) && !error;
    const std::optional<std::string> read = StateOf(options_.manifest, options_.isAdded && isMissing);
    if (options_.isAdded && isMissing)
        manifest.path = options_.manifest;
    else
        manifest = ReadProofManifest(options_.manifest);
    const size_t first = options_.isAdded ? manifest.entries.size() : 0;
    if (options_.isAdded) AddProofEntries(manifest, options_.wishes);
    if (manifest.entries.empty()) throw InputError(manifest.path, "has no entries", "--add makes some");

    VerifyReport report{&manifest, LibraryFile(), "", nullptr, options_.isAdded, options_.isUpdated, false};
    PhantomShelf phantoms;
    ProofCall call{context.callExport, "", "", std::nullopt, {}, phantoms};
    if (!options_.library.empty()) {
        InputFileSize(options_.library);  // refuses what is no file
        report.libraryFile = call.library = fs::absolute(PathOf(options_.library)).string();
    }
    report.libraryHash = Sha256OfFile(report.libraryFile);
    if (options_.hasTimeout)
        call.timeout = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::duration<double>(options_.timeoutSeconds));

    const bool isOnlyCompared = !options_.isAdded && !options_.isUpdated;
    // The entries change below, and what was compared with them stays in the report.
    const ProofManifest before = manifest;
    const std::vector<const ProofEntry*> entries = PointersTo(before.entries, first);
    Progress progress = context.messages.Follow("entries", entries.size());
    const std::vector<EntryResult> results =
        RunProofEntries(before, entries, isOnlyCompared ? ProofDepth::Compared : ProofDepth::All, call,
                        options_.jobs, [&](size_t done, size_t unequal) { progress.Update(done, unequal); });
    progress.Finish();
    report.results = &results;

    ExitCode code = CodeOf(results);
    // One that failed has nothing that could be taken for right: then the manifest stays as it is.
    if (!isOnlyCompared && CountState(results, ProofState::Failed) == 0) {
        if (TakeResults(manifest, first, results, options_.reason)) {
            Sign(manifest, report.libraryHash);
            Write(manifest, read);
            report.isWritten = true;
        }
        code = ExitCode::Well;
    }
    if (!report.isWritten) report.manifest = &before;
    if (junit) {
        junit->Write(BytesOf(VerifyToJunit(report)));
        junit->Publish();
    }
    if (context.wantsJson)
        PrintObject(context, code, VerifyToJson(report));
    else
        context.report << FormatVerify(report);
    return code;
}

}  // namespace vastrelline
