// SPDX-License-Identifier: Apache-2.0
#include "report/LogFile.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/TellIfPossible.h"

namespace vastrelline {

namespace {

constexpr std::wstring_view kRule =
    L"=========================================================================================\r\n";

}  // namespace

void LogFile::Open(const std::wstring& path, OpenMode mode) {
    TellIfPossible([&] { file_.emplace(path, mode); });
}

bool LogFile::IsOpen() const { return file_ && file_->IsOpen(); }

void LogFile::Close() { file_.reset(); }

void LogFile::Write(std::wstring_view text) {
    if (!IsOpen()) return;
    bool isWritten = false;
    TellIfPossible([&] {
        const std::string bytes = NarrowLogText(text);
        isWritten = file_->Append(bytes.data(), bytes.size());
    });
    if (!isWritten) Close();
}

int32_t WriteLogText(LogFile* file, std::wstring_view text) {
    if (file == nullptr) return 0;
    file->Write(text);
    return 1;
}

std::wstring MakeLogPath(std::wstring_view iniPath) {
    return FolderOfPath(iniPath).append(L"\\ExtraOralLog.txt");
}

void WriteLogHead(LogFile& log, std::wstring_view startLine, const CalendarTime& start,
                  std::wstring_view version, std::wstring_view sectionName) {
    TellIfPossible([&] {
        WriteLogText(&log, L"\r\n\r\n");
        WriteLogText(&log, kRule);
        WriteLogText(&log, FormatText(L"============================== Vastrelline Log %4d.%02d.%02d "
                                      L"==============================\r\n",
                                      {start.year, start.month, start.day}));
        WriteLogText(&log, kRule);
        WriteLogText(&log, FormatText(startLine, {start.hour, start.minute, start.second, version}));
        WriteLogText(&log, FormatText(L"\t\t\t Section Name [%s]\r\n", {sectionName}));
    });
}

void WriteLogEnd(LogFile& log, std::wstring_view endLine, const CalendarTime& end,
                 const FormatArgument& elapsed) {
    TellIfPossible([&] {
        WriteLogText(&log, FormatText(endLine, {end.hour, end.minute, end.second, elapsed}));
        WriteLogText(&log, kRule);
    });
}

}  // namespace vastrelline
