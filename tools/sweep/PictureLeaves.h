// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace vastrelline {

// A key with one of its values.
struct KeyWithValue {
    std::string key;
    std::string value;
};

// Gives pictures names that tell the values they were made with: "04_MAX_SLOPE=1.5.png", and of two keys
// "04_MAX_SLOPE=1.5,02_POST_GAMMA_RATIO=2.png". Every file system takes them, and no two are equal there.
class PictureLeaves {
public:
    std::string Name(const std::vector<KeyWithValue>& settings);

private:
    std::vector<std::string> given_;  // in small letters: some file systems see no difference
};

}  // namespace vastrelline
