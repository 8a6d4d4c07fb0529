// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lint/LintJson.h"
#include "lint/LintRules.h"

namespace vastrelline {

inline LintedFile Linted(const std::string& path, const std::string& text) {
    return {path, LintProfile(ProfileFile(path, text)), std::nullopt, 0};
}

// One file with two warnings, a fix among them, and one that cannot be read.
inline std::vector<LintedFile> TwoFiles() {
    std::vector<LintedFile> files{Linted("a b.ini", "[A]\nPROCMODE=1\n SAVE_LOGG=1\nSAVE_LOG\n"), {}};
    files[1].path = "none.ini";
    files[1].error = InputError("none.ini", "does not exist");
    return files;
}

}  // namespace vastrelline
