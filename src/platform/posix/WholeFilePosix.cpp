#include "platform/WholeFile.h"
#include "platform/posix/FileContents.h"
#include "platform/posix/NativePath.h"

namespace vastrelline {

bool SaveWholeFile(const std::wstring& path, const std::string& bytes) {
    const auto replace = [&](std::string& contents) {
        contents = bytes;
        return ContentsEdit::Replace;
    };
    return UpdateFileContents(NativePath(path), replace, OldContents::Ignore);
}

}  // namespace vastrelline
