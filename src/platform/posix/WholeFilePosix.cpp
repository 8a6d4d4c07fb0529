#include "platform/WholeFile.h"
#include "platform/posix/FileContents.h"
#include "platform/posix/NativePath.h"

namespace vastrelline {

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    return UpdateFileContents(NativePath(path), [&](std::string& contents) {
        contents = bytes;
        return ContentsEdit::Replace;
    });
}

}  // namespace vastrelline
