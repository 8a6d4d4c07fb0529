// SPDX-License-Identifier: Apache-2.0
#include "commands/BatchFrame.h"

#include <exception>
#include <filesystem>
#include <iterator>
#include <new>
#include <system_error>
#include <utility>

#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/FrameFile.h"
#include "formats/PictureFile.h"
#include "platform/Cancellation.h"
#include "platform/PathText.h"
#include "platform/Reason.h"
#include "profile/TopLevel.h"
#include "runs/FrameRun.h"
#include "runs/LookAtFrame.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// A worker gets so much for itself, and so much for each pixel of its frame. That is several times what a run
// needs: all sample sections process a frame of two million pixels within 256 MiB.
constexpr uint64_t kWorkerBytes = uint64_t{512} << 20;
constexpr uint64_t kBytesPerPixel = 512;
constexpr uint64_t kBytesPerMebibyte = uint64_t{1} << 20;

void Append(std::vector<Finding>& findings, std::vector<Finding> more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

// Whether the result that the manifest tells of is there, whole and made of this very frame.
bool IsDone(const FrameHashes* told, const std::string& frameHash, const std::string& resultPath) {
    if (told == nullptr || told->frame != frameHash || !fs::is_regular_file(PathOf(resultPath))) return false;
    try {
        return Sha256OfFile(resultPath) == told->result;
    } catch (const InputError&) {
        return false;
    }
}

void MakeFolderOf(const std::string& path) {
    std::error_code error;
    fs::create_directories(PathOf(path).parent_path(), error);
    if (error) throw OutputError(path, "cannot be written: " + DescribeReason(error));
}

uint64_t MemoryLimitOf(const BatchOptions& options, const Frame& frame) {
    if (options.memoryMebibytes > 0) return options.memoryMebibytes * kBytesPerMebibyte;
    return kWorkerBytes + kBytesPerPixel * frame.pixels.size();
}

// The bytes of the result's file.
std::vector<uint8_t> Process(const BatchPlan& plan, const Frame& frame, FrameOutcome& outcome,
                             const std::function<void()>& onWait) {
    ExportRequest call = MakeCall(plan.options.run, plan.traits, frame);
    call.memoryLimit = MemoryLimitOf(plan.options, frame);
    call.onWait = onWait;
    std::optional<PrivateFolder> bitmaps;
    if (plan.traits.takesBitmapPath) call.bitmapPath = bitmaps.emplace().Inside("picture.bmp");
    FrameRun run = RunFrame(plan.profile, plan.plan, ProfileUse::PrivateCopy, WithoutDumps(), std::move(call),
                            plan.callExport);
    TestCode(run, plan.traits);
    outcome.elapsedMs = run.call.record.elapsedMs;
    Append(outcome.findings, std::move(run.findings));
    if (plan.traits.takesBitmapPath) return ReadBitmap(run.call.bitmapPath, plan.traits);
    Append(outcome.findings, LookAtResult(outcome.resultPath, run.call.output));
    PictureStyle style = MakeStyle(plan.options.run, ReadTopLevel(plan.profile, plan.plan.section));
    const Frame result{frame.width, frame.height, std::move(run.call.output)};
    if (FileKindOf(outcome.resultPath) == FileKind::Png)
        style.texts = RecordTexts(MakeRunRecord({plan.options.run, plan.profile, plan.plan, plan.traits},
                                                frame, result, style.window));
    return EncodePicture(outcome.resultPath, result, style);
}

void Do(const BatchPlan& plan, FrameOutcome& outcome, const std::function<void()>& onWait) {
    const std::string& path = outcome.frame->path;
    const std::string& result = outcome.frame->result;
    // Before the frame is read: one that changes meanwhile counts as another one later.
    FrameHashes hashes;
    hashes.frame = Sha256OfFile(path);
    const FrameHashes* const told = plan.manifest.FindDone(result);
    if (IsDone(told, hashes.frame, outcome.resultPath)) {
        outcome.resultHash = told->result;
        outcome.state = FrameState::Before;
        return;
    }
    const LoadedFrame loaded =
        LoadFrameFile(path, {ParseFrameSize(plan.options.run.size), FindSensorSize(plan.profile)});
    outcome.size = {loaded.frame.width, loaded.frame.height};
    for (const std::string& note : loaded.notes)
        outcome.findings.push_back({Severity::Note, path, 0, 1, note, ""});
    Append(outcome.findings,
           LookAtFrame({path, loaded.frame, loaded.sourceBits}, plan.profile, plan.plan.section));
    const std::vector<uint8_t> bytes = Process(plan, loaded.frame, outcome, onWait);
    hashes.result = Sha256Of(bytes);

    MakeFolderOf(outcome.resultPath);
    OutputFile file(outcome.resultPath, plan.options.run.mayReplace || plan.manifest.IsOwn(result));
    file.Write(bytes);
    if (IsCancelled()) throw CancelledError();
    plan.manifest.Announce(result);
    file.Publish();
    plan.manifest.TellDone(result, path, hashes);
    outcome.resultHash = hashes.result;
    outcome.state = FrameState::Done;
}

// Where nobody has said it: at the frame.
ToolError AtFrame(const std::string& path, const ToolError& error) {
    if (!error.Where().empty()) return error;
    return {error.Code(), path, error.What(), error.Remedy()};
}

}  // namespace

FrameOutcome DoBatchFrame(const BatchPlan& plan, const ListedFrame& frame,
                          const std::function<void()>& onWait) {
    FrameOutcome outcome;
    outcome.frame = &frame;
    outcome.resultPath = (PathOf(plan.options.folder) / PathOf(frame.result)).make_preferred().string();
    try {
        Do(plan, outcome, onWait);
    } catch (const CancelledError&) {
        throw;
    } catch (const ToolError& error) {
        outcome.error = AtFrame(frame.path, error);
    } catch (const std::bad_alloc&) {
        outcome.error = ProcessingError(frame.path, "out of memory");
    } catch (const std::exception& error) {
        outcome.error = ProcessingError(frame.path, error.what());
    }
    if (outcome.error && IsCancelled()) throw CancelledError();
    return outcome;
}

}  // namespace vastrelline
