// SPDX-License-Identifier: Apache-2.0
#include "library/ExportFunctions.h"

#include <cstdint>

#include "messages/ToolError.h"
#include "platform/DynamicLibrary.h"

namespace vastrelline {
namespace {

std::string Remedy() { return std::string("name a build of ").append(kLibraryLeaf); }

class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::string& path) : path_(path) {
        std::string reason;
        library_ = DynamicLibrary::Load(path, reason);
        if (!reason.empty()) throw InputError(path, "cannot be loaded as a library: " + reason, Remedy());
    }

    template <typename Function>
    Function Find(const char* name) const {
        void* const found = library_.Find(name);
        if (found == nullptr) throw InputError(path_, std::string("has no function ") + name, Remedy());
        return reinterpret_cast<Function>(found);
    }

private:
    std::string path_;
    DynamicLibrary library_;
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
