// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/JournalFile.h"

namespace vastrelline {

// The file in an output folder that tells what batches did there.
inline constexpr std::string_view kManifestLeaf = "batch-manifest.jsonl";

// What decides a result beside the frame.
struct BatchSettings {
    std::string profileHash;  // SHA-256, as those below
    std::string section;
    std::string libraryHash;
    std::string options;  // all of the command line that counts for a result
};

struct FrameHashes {
    std::string frame;
    std::string result;
};

// What a batch has done, kept so that a later one can go on after any end, the sudden ones included: lines of
// JSON, each written in one piece and only ever added; a line that is not whole is passed over. A result is
// announced before it takes its name and told as done afterwards, so that a file that no line announces is
// somebody else's. As long as the object lives no other batch works in the folder.
class BatchManifest {
public:
    enum class Opening : uint8_t {
        New,     // nothing may be there
        Resume,  // what was done counts
        Anew,    // nothing counts, and results may be replaced
    };

    // Makes the folder if it is missing.
    //
    // Errors   OutputError: another batch works there, there was one already (New), it cannot be written
    BatchManifest(const std::string& folder, Opening opening, BatchSettings settings);
    ~BatchManifest() = default;
    BatchManifest(const BatchManifest&) = delete;
    BatchManifest& operator=(const BatchManifest&) = delete;
    BatchManifest(BatchManifest&&) = delete;
    BatchManifest& operator=(BatchManifest&&) = delete;

    const std::string& Path() const { return path_; }

    // Whether a result of this name was announced before this batch began.
    bool IsOwn(const std::string& result) const;

    // What the manifest says of a result that was done with the same settings before this batch began.
    const FrameHashes* FindDone(const std::string& result) const;

    // Both may be called by several threads at a time.
    //
    // Errors   OutputError
    void Announce(const std::string& result);
    void TellDone(const std::string& result, const std::string& frame, const FrameHashes& hashes);

private:
    size_t ReadPiece(uint64_t place, std::span<char> piece) const;
    bool IsEmpty() const;
    void Read();
    void TakeLine(const std::string& line);
    void Append(std::string line);

    std::string path_;
    BatchSettings settings_;
    JournalFile file_;
    std::map<std::string, std::optional<FrameHashes>> earlier_;  // by result; announced, and perhaps done
    std::mutex mutex_;
};

}  // namespace vastrelline
