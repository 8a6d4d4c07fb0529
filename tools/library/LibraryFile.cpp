// SPDX-License-Identifier: Apache-2.0
#include "library/LibraryFile.h"

#include "messages/ToolError.h"
#include "platform/DynamicLibrary.h"
#include "platform/OwnProcess.h"

namespace vastrelline {

std::string LibraryFile() {
    std::string path = FindLoadedLibrary();
    if (path.empty()) path = OwnProgramFile();
    if (path.empty()) throw ProcessingError({}, "the tool does not find its own file");
    return path;
}

}  // namespace vastrelline
