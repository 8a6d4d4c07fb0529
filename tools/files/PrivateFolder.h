// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/PathText.h"

namespace vastrelline {

// A fresh, empty folder that only this user may enter. It goes with everything in it when the object goes.
class PrivateFolder {
public:
    // Errors   OutputError: there is no room for it where temporary files go
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    PrivateFolder(PrivateFolder&&) = delete;
    PrivateFolder& operator=(PrivateFolder&&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    // The path of a file or folder in it.
    std::string Inside(std::string_view leaf) const { return (path_ / PathOf(leaf)).string(); }

private:
    std::filesystem::path path_;
};

}  // namespace vastrelline
