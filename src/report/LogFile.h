// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/TextFormat.h"

namespace vastrelline {

// The text log of one run; made closed. The driver owns it and hands it to every stage. A log that cannot
// be opened, or a line that cannot be written, ends the log of this run and nothing else.
class LogFile {
public:
    LogFile() = default;

    // Opens the file for this run alone; a second opener fails until Close.
    void Open(const std::wstring& path, OpenMode mode);
    bool IsOpen() const;
    void Close();

    // Writes one text behind the end of the file, in the bytes of NarrowLogText.
    void Write(std::wstring_view text);

private:
    std::optional<OutputFile> file_;
};

// Writes one text to the log. Returns 1, or 0 if `file` is null.
int32_t WriteLogText(LogFile* file, std::wstring_view text);

// Where the log of a profile lies: in the profile's folder.
std::wstring MakeLogPath(std::wstring_view iniPath);

// Start lines of the chains. Filled with hour, minute, second and the profile's version text.
inline constexpr std::wstring_view kConfiguredStartLine =
    L"#### %02d:%02d:%02d \t: Start Vastrelline.dll [v%s]\r\n";
inline constexpr std::wstring_view kFixedStartLine = L"#### %02d:%02d:%02d \t: Start Quorla.dll [v%s]\r\n";
inline constexpr std::wstring_view kCrStartLine =
    L"#### %02d:%02d:%02d \t: Start Quorla.dll [CR Mode v%s]\r\n";

// End lines of the chains. Filled with hour, minute, second and the time of the whole run, in seconds but for
// the fixed and the CR chain, which count milliseconds.
inline constexpr std::wstring_view kConfiguredEndLine =
    L"#### %02d:%02d:%02d \t: End Post-Processing ( %.03lf sec )\r\n";
inline constexpr std::wstring_view kLowExposureEndLine =
    L"#### %02d:%02d:%02d \t: End Post-Processing ( %.03lf sec )\r\n\r\n";
inline constexpr std::wstring_view kFixedEndLine =
    L"#### %02d:%02d:%02d \t: End Post-Processing ( %d ms )\r\n";

// The head of a run: rules, date, start line, name of the section.
void WriteLogHead(LogFile& log, std::wstring_view startLine, const CalendarTime& start,
                  std::wstring_view version, std::wstring_view sectionName);

// The end of a run: end line and closing rule.
//
// elapsed   of the type that the end line takes: seconds as a double or milliseconds as an integer
void WriteLogEnd(LogFile& log, std::wstring_view endLine, const CalendarTime& end,
                 const FormatArgument& elapsed);

}  // namespace vastrelline
