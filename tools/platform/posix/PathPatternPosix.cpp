// SPDX-License-Identifier: Apache-2.0
#include <glob.h>

#include "platform/PathPattern.h"

namespace vastrelline {

std::vector<std::string> ExpandPattern(const std::string& pattern) {
    glob_t found = {};
    const int failure = glob(pattern.c_str(), GLOB_NOSORT, nullptr, &found);
    std::vector<std::string> paths;
    if (failure == 0) paths.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    globfree(&found);
    return paths;
}

}  // namespace vastrelline
