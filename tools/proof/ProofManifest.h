// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frames/FrameSize.h"
#include "library/ExportRequest.h"

namespace vastrelline {

// A phantom as its arguments tell it.
struct PhantomRecipe {
    FrameSize size;
    double dose = 1.0;
    uint64_t seed = 1;

    bool operator==(const PhantomRecipe&) const = default;
};

// The frame of an entry: a file, relative to the manifest's folder unless it is absolute, or a phantom.
struct ProofFrame {
    std::string file;
    std::optional<FrameSize> size;  // of a raw file whose name does not tell it
    std::optional<PhantomRecipe> phantom;

    bool operator==(const ProofFrame&) const = default;
};

// The frame at one point of a run.
struct ProofPoint {
    std::string point;                // "input", "inverted", "stage", "result", "bitmap"
    std::optional<int32_t> position;  // of a stage in a list
    std::string title;                // of the stage: "CLAHE"; of other points as `point`
    std::string dump;                 // the dump that the frame is of; empty: none
    std::string hash;                 // SHA-256; empty: the stage shows no frame

    bool operator==(const ProofPoint&) const = default;
};

// What a run gave, and of what. All hashes are SHA-256: of frames as 16-bit levels, low byte first, row by
// row from the top; of files of their bytes.
struct ProofFacts {
    std::string frameHash;
    std::string profileHash;
    std::vector<ProofPoint> points;  // in the order of the run

    bool operator==(const ProofFacts&) const = default;
};

// What held until somebody had a reason.
struct ProofChange {
    std::string date;  // "2026-03-01", UTC
    std::string reason;
    std::string version;  // that gave the new hashes
    ProofFacts before;
};

struct ProofEntry {
    ProofFrame frame;
    std::string profile;  // as the frame's file
    std::string section;
    ExportKind exportKind = ExportKind::Plain;
    std::optional<ProofFacts> facts;   // none yet: the entry was written by hand
    std::vector<ProofChange> history;  // the newest last
};

// A list of runs with what they gave when it was made. The head says by what: for people, nothing is compared
// with it.
struct ProofManifest {
    std::string path;  // of the file
    std::string version;
    std::string platform;
    std::string libraryHash;
    std::vector<ProofEntry> entries;
};

// Errors   InputError that names the place, for all that is no manifest: other files, wrong types, JSON
// nested
//          deeper than any manifest
ProofManifest ReadProofManifest(const std::string& path);

// The file's bytes.
//
// Errors   OutputError if a path in it is no UTF-8 and cannot be written as JSON
std::string FormatProofManifest(const ProofManifest& manifest);

// A path in the manifest as the tool opens it.
std::string ResolveInManifest(const ProofManifest& manifest, const std::string& file);

// "bitewing.png, dental.ini, General, ImageProcessing"; a phantom is "phantom 1300x1668 dose 0.12 seed 7".
std::string NameProofEntry(const ProofEntry& entry);

}  // namespace vastrelline
