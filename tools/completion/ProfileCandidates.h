// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "completion/Completion.h"

namespace vastrelline {

// The sections of a profile; none if it cannot be read. A path may begin with ~/.
std::vector<Candidate> ListSections(const std::string& profilePath);

// The keys that runs read in a section of a profile, with their values there. Without a section, or if the
// profile cannot be read, none.
std::vector<Candidate> ListSectionKeys(const std::string& profilePath, const std::string& section);

// All keys that the library knows, without positions.
std::vector<Candidate> ListKnownKeys();

}  // namespace vastrelline
