// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <memory>

#include "platform/OwnProcess.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace vastrelline {

const char* const kTemporaryFolderHint = "TMP names another place for temporary files";
namespace {

constexpr size_t kMostPathUnits = 32768;

// As the system itself ends a program that cannot go on; its usual code, 3, is one of the tool's own.
[[noreturn]] void EndAborted(int /*number*/) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_FATAL_APP_EXIT));
    std::_Exit(1);
}

// What had been set before goes back to the terminal, which outlives this process.
struct TerminalCharacters {
    UINT before = GetConsoleOutputCP();
    TerminalCharacters() { SetConsoleOutputCP(CP_UTF8); }
    ~TerminalCharacters() { SetConsoleOutputCP(before); }
};

}  // namespace

const ProcessNumber kGreatestProcessNumber = std::numeric_limits<DWORD>::max();

ProcessNumber OwnProcessNumber() { return GetCurrentProcessId(); }

bool IsProcessAlive(ProcessNumber number) {
    const Handle process(OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(number)));
    // Who may not look at it is refused otherwise.
    if (!process.IsOpen()) return GetLastError() != ERROR_INVALID_PARAMETER;
    return WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT;
}

std::string OwnProgramFile() {
    std::wstring path(kMostPathUnits, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return NarrowToUtf8(std::wstring_view(path).substr(0, length));
}

std::optional<std::vector<std::string>> TakeCommandLine(int /*argc*/, const char* const* /*argv*/) {
    // main gets them in the machine's code page, which lacks most characters.
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              LocalFree);
    if (words == nullptr) return std::nullopt;
    std::vector<std::string> taken;
    for (int i = 0; i < count; ++i) {
        const std::wstring_view word = words.get()[i];
        taken.push_back(NarrowToUtf8(word));
        if (WidenUtf8(taken.back()) != word) return std::nullopt;  // half a surrogate pair
    }
    return taken;
}

std::optional<std::string> EnvironmentText(const char* name) {
    const std::wstring wide = WidenUtf8(name);
    const DWORD size = GetEnvironmentVariableW(wide.c_str(), nullptr, 0);
    if (size == 0) return std::nullopt;
    std::wstring text(size, L'\0');
    text.resize(GetEnvironmentVariableW(wide.c_str(), text.data(), size));
    return NarrowToUtf8(text);
}

std::optional<std::string> HomeFolder() { return EnvironmentText("USERPROFILE"); }

void PrepareStandardStreams() {
    for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    static const TerminalCharacters characters;
}

bool IsErrorStreamTerminal() {
    DWORD mode = 0;
    const HANDLE terminal = GetStdHandle(STD_ERROR_HANDLE);
    // Colours are sequences of characters, which old terminals show as such.
    return GetConsoleMode(terminal, &mode) != FALSE &&
           SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

void ServeParent() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    std::signal(SIGABRT, EndAborted);
}

}  // namespace vastrelline
