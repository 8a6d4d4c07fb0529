#include "platform/Paths.h"
#include "platform/Text.h"

namespace vastrelline {

size_t FindLastSeparator(std::wstring_view path) { return path.rfind(L'\\'); }

// File systems here do not tell the cases apart, so the folders are not led astray.
std::wstring LowerCaseFileName(std::wstring_view path) { return LowerCaseAscii(path); }

}  // namespace vastrelline
