// SPDX-License-Identifier: Apache-2.0
#include "report/RawDump.h"

#include <bit>

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/TextFormat.h"
#include "report/TellIfPossible.h"

namespace vastrelline {

// Files are little-endian, and pixels are written as they lie in memory.
static_assert(std::endian::native == std::endian::little);

std::wstring StoredRawPath(std::wstring_view path) {
    constexpr std::wstring_view kExtension = L".raw";
    std::wstring stored = LowerCaseFileName(path);
    // Looked for in the whole path, folders included, whatever their case.
    if (LowerCaseAscii(path).find(kExtension) == std::wstring::npos) stored.append(kExtension);
    return stored;
}

void DumpRaw(std::wstring_view path, const uint16_t* pixels, int32_t width, int32_t height) {
    TellIfPossible([&] { SaveRawFile(StoredRawPath(path), pixels, width, height, 16); });
}

int32_t SaveRawFile(const std::wstring& path, const void* data, int32_t width, int32_t height, int32_t bits) {
    if (width < 0 || height < 0 || bits < 0) return 0;
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    OutputFile file(path, OpenMode::TruncateExclusive);
    if (!file.IsOpen()) return 0;
    return file.Append(data, count * static_cast<size_t>(bits / 8)) ? 1 : 0;
}

std::wstring MakeDumpPath(std::wstring_view writePath, std::wstring_view nameFormat, int32_t number) {
    return std::wstring(writePath).append(FormatText(nameFormat, {number}));
}

void DumpNumbered(std::wstring_view writePath, std::wstring_view nameFormat, int32_t& dumpNumber,
                  const uint16_t* pixels, int32_t width, int32_t height) {
    TellIfPossible([&] { DumpRaw(MakeDumpPath(writePath, nameFormat, dumpNumber), pixels, width, height); });
    // Wraps like any 32-bit count.
    dumpNumber = static_cast<int32_t>(static_cast<uint32_t>(dumpNumber) + 1);
}

}  // namespace vastrelline
