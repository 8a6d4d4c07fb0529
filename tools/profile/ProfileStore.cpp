#include "profile/ProfileStore.h"

#include <cstdint>
#include <vector>

#include "files/OutputFile.h"

namespace vastrelline {

void StoreProfileFile(const std::string& path, const std::string& bytes, bool mayReplace) {
    OutputFile file(path, mayReplace);
    file.Write(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    file.Publish();
}

}  // namespace vastrelline
