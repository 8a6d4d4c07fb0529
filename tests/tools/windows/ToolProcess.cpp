// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>

#include "ToolProgram.h"
#include "platform/windows/CommandText.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"
#include "runs/ChildProcess.h"
#include "support/SetVariable.h"

namespace vastrelline {
namespace {

constexpr const char* kInterruptedVariable = "VASTRELLINE_TEST_INTERRUPTED";

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
    // With a console of its own, so that an interrupt there is for it alone.
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                       nullptr, &startup, &started) == FALSE)
        throw std::runtime_error("the tool does not start");
    CloseHandle(started.hThread);
    handle_ = reinterpret_cast<intptr_t>(started.hProcess);
    number_ = started.dwProcessId;
}

ToolProcess::~ToolProcess() {
    if (handle_ == kNone) return;
    const Handle process(reinterpret_cast<HANDLE>(handle_));
    TerminateProcess(process.Get(), 1);
}

// What Interrupt starts, for its own console a process would lose by this.
TEST(ToolProcess, DISABLED_InterruptsAnother) {
    const char* const number = std::getenv(kInterruptedVariable);
    ASSERT_NE(number, nullptr);
    ASSERT_NE(AttachConsole(static_cast<DWORD>(std::stoul(number))), FALSE) << GetLastError();
    SetConsoleCtrlHandler(nullptr, TRUE);  // not for this process, which has come to that console
    ASSERT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), FALSE) << GetLastError();
}

void ToolProcess::Interrupt() const {
    const SetVariable variable(kInterruptedVariable, std::to_string(number_));
    const ChildEnd end = RunChild({OwnProgram(), "--gtest_also_run_disabled_tests",
                                   "--gtest_filter=ToolProcess.DISABLED_InterruptsAnother"},
                                  std::nullopt);
    if (end.kind != ChildEnd::Kind::Exited || end.number != 0)
        throw std::runtime_error("the tool was not interrupted");
}

ToolRun ToolProcess::Await() {
    const Handle process(reinterpret_cast<HANDLE>(std::exchange(handle_, kNone)));
    DWORD code = 0;
    WaitForSingleObject(process.Get(), INFINITE);
    constexpr DWORD kLeastException = 0x40000000;
    if (GetExitCodeProcess(process.Get(), &code) == FALSE || code >= kLeastException)
        throw std::runtime_error("the tool crashed");
    return {static_cast<int>(code), ReadBytes(folder_ / "report.txt"), ReadBytes(folder_ / "errors.txt")};
}

}  // namespace vastrelline
