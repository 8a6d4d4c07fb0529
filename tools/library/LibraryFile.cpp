// SPDX-License-Identifier: Apache-2.0
#include "library/LibraryFile.h"

#include <link.h>

#include <filesystem>
#include <system_error>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// Takes the name of the first loaded object that is the library.
int TakeName(dl_phdr_info* object, size_t /*size*/, void* found) {
    const std::string path = object->dlpi_name == nullptr ? "" : object->dlpi_name;
    if (!std::filesystem::path(path).filename().string().starts_with("libvastrelline.so")) return 0;
    *static_cast<std::string*>(found) = path;
    return 1;
}

}  // namespace

std::string LibraryFile() {
    std::string path;
    dl_iterate_phdr(TakeName, &path);
    if (!path.empty()) return path;
    std::error_code error;
    path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    if (error) throw ProcessingError({}, "the tool does not find its own file: " + error.message());
    return path;
}

}  // namespace vastrelline
