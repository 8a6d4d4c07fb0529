// SPDX-License-Identifier: Apache-2.0
#include "proof/ProofSuite.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <new>

#include "batch/Crew.h"
#include "platform/Cancellation.h"

namespace vastrelline {
namespace {

void Fail(EntryResult& result, ToolError error) {
    result.verdict = {ProofState::Failed, 0, 0, error.what()};
    result.error = std::move(error);
}

EntryResult DoEntry(const ProofManifest& manifest, const ProofEntry& entry, ProofDepth depth,
                    const ProofCall& call) {
    EntryResult result;
    result.entry = &entry;
    try {
        const bool isCompared = depth == ProofDepth::Compared && entry.facts;
        result.outcome = RunProofEntry(manifest, entry, isCompared ? &*entry.facts : nullptr, call);
        result.verdict = JudgeProof(entry, result.outcome.facts);
    } catch (const CancelledError&) {
        throw;
    } catch (const ToolError& error) {
        // What is wrong with the library is wrong with every entry.
        if (!call.library.empty() && error.Where() == call.library) throw;
        Fail(result, error);
    } catch (const std::bad_alloc&) {
        Fail(result, ProcessingError({}, "out of memory"));
    } catch (const std::exception& error) {
        Fail(result, ProcessingError({}, error.what()));
    }
    return result;
}

}  // namespace

std::vector<EntryResult> RunProofEntries(const ProofManifest& manifest,
                                         const std::vector<const ProofEntry*>& entries, ProofDepth depth,
                                         const ProofCall& call, size_t jobs,
                                         const std::function<void(size_t, size_t)>& onDone) {
    std::vector<EntryResult> results(entries.size());
    std::mutex mutex;
    size_t done = 0;
    size_t unequal = 0;
    ProofCall waiting = call;
    waiting.onWait = [&] {
        const std::lock_guard lock(mutex);
        onDone(done, unequal);
    };
    ShareOut(jobs, entries.size(), [&](size_t part) {
        if (IsCancelled()) return false;
        results[part] = DoEntry(manifest, *entries[part], depth, waiting);
        const std::lock_guard lock(mutex);
        ++done;
        if (results[part].verdict.state != ProofState::Equal) ++unequal;
        onDone(done, unequal);
        return true;
    });
    if (IsCancelled()) throw CancelledError();
    return results;
}

size_t CountState(const std::vector<EntryResult>& results, ProofState state) {
    return static_cast<size_t>(std::count_if(results.begin(), results.end(), [&](const EntryResult& each) {
        return each.verdict.state == state;
    }));
}

ExitCode CodeOf(const std::vector<EntryResult>& results) {
    ExitCode code = ExitCode::Well;
    for (const EntryResult& each : results) {
        if (each.error)
            code = std::max(code, each.error->Code());
        else if (each.verdict.state != ProofState::Equal)
            code = std::max(code, ExitCode::Findings);
    }
    return code;
}

}  // namespace vastrelline
