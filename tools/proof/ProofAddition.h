// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "proof/ProofManifest.h"

namespace vastrelline {

// What is to be proved: every frame through every section of every profile.
struct ProofWishes {
    std::vector<std::string> frames;    // files, and phantoms as ReadPhantomRecipe reads them
    std::vector<std::string> profiles;  // files
    std::vector<std::string> sections;  // empty: all that a host may name
    std::string exportName;             // empty: the one that runs what the section says
};

// "phantom", or "phantom:1300x1668:0.12:7" with size, dose and seed, the last of which may be left out.
//
// Errors   UsageError for any other text that begins so
PhantomRecipe ReadPhantomRecipe(std::string_view text);

// Adds the entries, without hashes; paths become relative to the manifest's folder.
//
// Errors   UsageError: no such section or export, the manifest has such an entry; InputError: no such file
void AddProofEntries(ProofManifest& manifest, const ProofWishes& wishes);

}  // namespace vastrelline
