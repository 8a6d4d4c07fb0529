// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <link.h>

#include <cstddef>
#include <filesystem>

#include "platform/DynamicLibrary.h"

namespace vastrelline {

const char* const kLibraryLeaf = "libvastrelline.so";

namespace {

// Reasons of the loader begin with the file's name, which stands before them already.
std::string LoaderReason(const std::string& library) {
    const char* const said = dlerror();
    std::string reason = said == nullptr ? "unknown reason" : said;
    const std::string head = library + ": ";
    return reason.starts_with(head) ? reason.substr(head.size()) : reason;
}

// Takes the name of the first loaded object that is the library.
int TakeName(dl_phdr_info* object, size_t /*size*/, void* found) {
    const std::string path = object->dlpi_name == nullptr ? "" : object->dlpi_name;
    if (!std::filesystem::path(path).filename().string().starts_with(kLibraryLeaf)) return 0;
    *static_cast<std::string*>(found) = path;
    return 1;
}

}  // namespace

DynamicLibrary DynamicLibrary::Load(const std::string& path, std::string& reason) {
    DynamicLibrary library;
    // What this process is linked with has the same names; they are looked for in the file itself.
    library.handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    reason = library.handle_ == nullptr ? LoaderReason(path) : std::string();
    return library;
}

void* DynamicLibrary::Find(const char* name) const { return dlsym(handle_, name); }

std::string FindLoadedLibrary() {
    std::string path;
    dl_iterate_phdr(TakeName, &path);
    return path;
}

void PrintMessageBoxes(void* /*function*/) {}

}  // namespace vastrelline
