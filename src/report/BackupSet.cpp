// SPDX-License-Identifier: Apache-2.0
#include "report/BackupSet.h"

#include <cstddef>

#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"
#include "platform/WholeFile.h"
#include "report/Bitmap.h"
#include "report/CImageM.h"
#include "report/RawDump.h"
#include "report/TellIfPossible.h"

namespace vastrelline {

namespace {

// What a path holds before its last separator, and what it holds behind that; all of it where it has none.
std::wstring BeforeSeparator(const std::wstring& path) {
    const size_t separator = FindLastSeparator(path);
    return separator == std::wstring::npos ? path : path.substr(0, separator);
}

std::wstring BehindSeparator(const std::wstring& path) {
    const size_t separator = FindLastSeparator(path);
    return separator == std::wstring::npos ? path : path.substr(separator + 1);
}

// A raw dump that appears only when it is whole. Pixels are written as they lie in memory.
void SaveRaw(const std::wstring& path, const uint16_t* pixels, int32_t width, int32_t height) {
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    const std::string bytes(reinterpret_cast<const char*>(pixels), count * sizeof(*pixels));
    // A failure is silent.
    static_cast<void>(SaveWholeFile(StoredRawPath(path), bytes));
}

void SaveRendering(const std::wstring& path, const uint16_t* pixels, int32_t width, int32_t height,
                   const BackupWindow& window) {
    const CImageM image(pixels, width, height, 16, 16, window.centre, window.width, 0, L"", 0, 0, 1.0);
    SaveBitmap8(path, image.DisplayStride(), image.Width(), image.Height(), image.DisplayRow(0));
}

// What the names of one set begin with: the stamp of the time and the folder's own name.
std::wstring MakeStem(const std::wstring& folder) {
    const std::wstring prefix = MakeBackupPrefix(folder);
    return prefix + BehindSeparator(BeforeSeparator(prefix));
}

}  // namespace

std::wstring MakeBackupPrefix(const std::wstring& folder) {
    CreateFolder(folder);
    const CalendarTime now = LocalTime();
    if (!FileExists(folder)) CreateFolder(folder);
    return FormatText(L"%s\\%04d%02d%02d_%02d%02d%02d_",
                      {folder, now.year, now.month, now.day, now.hour, now.minute, now.second});
}

void WriteBackupSet(const std::wstring& folder, const std::wstring& sectionName, const uint16_t* input,
                    const uint16_t* output, int32_t width, int32_t height, const BackupWindow& window) {
    TellIfPossible([&] {
        const std::wstring stem = MakeStem(folder);
        TellIfPossible([&] { SaveRaw(stem + L"Calibrated.raw", input, width, height); });
        TellIfPossible([&] { SaveRendering(stem + sectionName + L".bmp", output, width, height, window); });
    });
}

void WriteCrBackupSet(const std::wstring& folder, const std::wstring& sectionName,
                      const std::string& profileBytes, const uint16_t* input, const uint16_t* output,
                      int32_t width, int32_t height) {
    TellIfPossible([&] {
        const std::wstring stem = MakeStem(folder);
        TellIfPossible([&] { SaveRaw(stem + L"_Calibrated.raw", input, width, height); });
        TellIfPossible(
            [&] { static_cast<void>(SaveWholeFile(stem + L"_" + sectionName + L".ini", profileBytes)); });
        TellIfPossible([&] { SaveRaw(stem + L"_Enhanced.raw", output, width, height); });
        TellIfPossible(
            [&] { SaveRendering(stem + L"_Enhanced.bmp", output, width, height, kTwelveBitWindow); });
    });
}

}  // namespace vastrelline
