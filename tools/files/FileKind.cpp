#include "files/FileKind.h"

#include <algorithm>
#include <filesystem>
#include <string>

namespace vastrelline {

FileKind FileKindOf(std::string_view path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (ending == ".raw") return FileKind::Raw;
    if (ending == ".pgm") return FileKind::Pgm;
    if (ending == ".png") return FileKind::Png;
    if (ending == ".bmp") return FileKind::Bmp;
    return FileKind::Other;
}

}  // namespace vastrelline
