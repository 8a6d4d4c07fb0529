// SPDX-License-Identifier: Apache-2.0
#include "library/ExportFunctions.h"

#include <dlfcn.h>

#include <cstdint>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// Reasons of the loader begin with the file's name, which stands before them already.
std::string LoaderReason(const std::string& library) {
    const char* const said = dlerror();
    std::string reason = said == nullptr ? "unknown reason" : said;
    const std::string head = library + ": ";
    return reason.starts_with(head) ? reason.substr(head.size()) : reason;
}

class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::string& path) : path_(path) {
        // What this process is linked with has the same names; they are looked for in the file itself.
        handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (handle_ == nullptr)
            throw InputError(path, "cannot be loaded as a library: " + LoaderReason(path),
                             "name a build of libvastrelline.so");
    }

    template <typename Function>
    Function Find(const char* name) const {
        void* const found = dlsym(handle_, name);
        if (found == nullptr)
            throw InputError(path_, std::string("has no function ") + name,
                             "name a build of libvastrelline.so");
        return reinterpret_cast<Function>(found);
    }

private:
    std::string path_;
    void* handle_ = nullptr;
};

void Limit(const LoadedLibrary& loaded, const std::string& library, const std::string& instructions) {
    const auto limit = loaded.Find<int32_t (*)(const char*)>(kLimitFunction);
    if (limit(instructions.c_str()) != 0)
        throw InputError(library, "has no forms for '" + instructions + "' on this machine");
}

}  // namespace

ExportFunctions LoadExportFunctions(const std::string& library, const std::string& instructions) {
    const LoadedLibrary loaded(library);
    if (!instructions.empty()) Limit(loaded, library, instructions);
    return {loaded.Find<decltype(ExportFunctions::plain)>("ImageProcessing"),
            loaded.Find<decltype(ExportFunctions::s)>("ImageProcessingS"),
            loaded.Find<decltype(ExportFunctions::n)>("ImageProcessing_N"),
            loaded.Find<decltype(ExportFunctions::ns)>("ImageProcessing_NS"),
            loaded.Find<decltype(ExportFunctions::ne)>("ImageProcessing_NE"),
            loaded.Find<decltype(ExportFunctions::cr)>("ImageProcessingCR"),
            loaded.Find<decltype(ExportFunctions::dose)>("Getdose_ImageInfo")};
}

}  // namespace vastrelline
