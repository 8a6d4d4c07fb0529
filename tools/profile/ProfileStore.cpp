// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileStore.h"

#include <cstdint>
#include <vector>

#include "files/OutputFile.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

void StoreProfileFile(const std::string& path, const std::string& bytes, bool mayReplace) {
    OutputFile file(path, mayReplace);
    file.Write(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    file.Publish();
}

void ReplaceProfileFile(const std::string& path, const std::string& before, const std::string& bytes) {
    OutputFile file(path, true);
    file.Write(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    // Last of all, so that hardly any time is left for another one to save.
    if (ProfileFile::Read(path).Text().Bytes() != before)
        throw OutputError(path, "was changed by somebody else meanwhile", "look at it and do it again");
    file.Publish();
}

}  // namespace vastrelline
