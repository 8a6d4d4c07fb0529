// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline::digest {

// A file that a run left: its name without what the clock put into it, and its bytes, texts masked.
struct LeftFile {
    std::string name;
    std::string bytes;
};

// A fresh folder with a profile in it and a folder "out" for what the run writes. It goes with everything in
// it when the object goes.
class RunFolder {
public:
    // base      an existing folder
    // name      a name that nothing has there
    // profile   "{folder}" becomes the path of the folder
    RunFolder(const std::filesystem::path& base, std::string_view name, std::string_view profile);
    ~RunFolder();
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

    // The path of a file in the folder, as the library takes it.
    std::string PathOf(std::string_view name) const;

    // Everything below the folder, the profile included, in the order of the masked names.
    std::vector<LeftFile> LeftFiles() const;

private:
    std::filesystem::path path_;
    std::string text_;  // path_, as it stands in texts
};

}  // namespace vastrelline::digest
