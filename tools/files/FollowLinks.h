// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// The file or folder that a symbolic link names in the end, whether it is there or not; any other path, and a
// link that leads nowhere, as it is. What is replaced by a rename would else be the link.
std::string FollowLinks(const std::string& path);

}  // namespace vastrelline
