// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <stdexcept>

#include "ToolProgram.h"
#include "platform/windows/CommandText.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

// A file that a child writes.
Handle MakeOutput(const std::filesystem::path& path) {
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return Handle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

ToolProcess::ToolProcess(const TemporaryFolder& folder, const std::vector<std::string>& arguments)
    : folder_(folder.Path()) {
    const std::filesystem::path program = std::filesystem::absolute(VASTRELLINE_TOOL).make_preferred();
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const Handle report = MakeOutput(folder_ / "report.txt");
    const Handle errors = MakeOutput(folder_ / "errors.txt");
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = report.Get();
    startup.hStdError = errors.Get();
    std::wstring line = WidenUtf8(JoinCommandLine(words));
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                       &started) == FALSE)
        throw std::runtime_error("the tool does not start");
    CloseHandle(started.hThread);
    handle_ = reinterpret_cast<intptr_t>(started.hProcess);
    number_ = started.dwProcessId;
}

ToolRun ToolProcess::Await() {
    const Handle process(reinterpret_cast<HANDLE>(handle_));
    DWORD code = 0;
    WaitForSingleObject(process.Get(), INFINITE);
    constexpr DWORD kLeastException = 0x40000000;
    if (GetExitCodeProcess(process.Get(), &code) == FALSE || code >= kLeastException)
        throw std::runtime_error("the tool crashed");
    return {static_cast<int>(code), ReadBytes(folder_ / "report.txt"), ReadBytes(folder_ / "errors.txt")};
}

}  // namespace vastrelline
