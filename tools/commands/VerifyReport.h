// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "proof/ProofManifest.h"
#include "proof/ProofSuite.h"

namespace vastrelline {

// What came of verifying a manifest, adding to it or updating it.
struct VerifyReport {
    const ProofManifest* manifest = nullptr;
    std::string libraryFile;  // that was called
    std::string libraryHash;
    const std::vector<EntryResult>* results = nullptr;
    bool isAdded = false;
    bool isUpdated = false;
    bool isWritten = false;  // the manifest's file is another one now
};

// The text for people: what is not equal, and how many are.
std::string FormatVerify(const VerifyReport& report);

// The fields behind the head of the object for programs.
nlohmann::ordered_json VerifyToJson(const VerifyReport& report);

// The results as JUnit's XML: a test case an entry.
std::string VerifyToJunit(const VerifyReport& report);

// "66 entries, all equal", "65 of 66 entries are equal, 1 is different"
std::string SummariseResults(const std::vector<EntryResult>& results);

}  // namespace vastrelline
