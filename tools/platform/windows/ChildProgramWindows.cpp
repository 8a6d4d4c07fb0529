// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/ChildProgram.h"
#include "platform/windows/CommandText.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

std::system_error LastFailure() { return std::system_error(LastSystemReason()); }

struct PipeEnds {
    Handle reading;
    Handle writing;
};

PipeEnds MakePipe() {
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (CreatePipe(&reading, &writing, &inherited, 0) == FALSE) throw LastFailure();
    PipeEnds ends{Handle(reading), Handle(writing)};
    if (SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0) == FALSE) throw LastFailure();
    return ends;
}

Handle OpenNothing() {
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    Handle nothing(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               &inherited, OPEN_EXISTING, 0, nullptr));
    if (!nothing.IsOpen()) throw LastFailure();
    return nothing;
}

// The handles that a child gets, and no others: those of a child that another thread starts meanwhile would
// keep that one's pipe open.
class HandleList {
public:
    HandleList(HANDLE one, HANDLE other) : handles_{one, other} {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory_.resize(size);
        list_ = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
        if (InitializeProcThreadAttributeList(list_, 1, 0, &size) == FALSE) throw LastFailure();
        if (UpdateProcThreadAttribute(list_, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                      sizeof(handles_), nullptr, nullptr) == FALSE) {
            const std::system_error failure = LastFailure();
            DeleteProcThreadAttributeList(list_);
            throw failure;
        }
    }
    ~HandleList() { DeleteProcThreadAttributeList(list_); }
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST Get() const { return list_; }

private:
    std::array<HANDLE, 2> handles_;
    std::vector<char> memory_;
    LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

// What is in it ends with its last handle, which is this process's.
Handle MakeJob() {
    Handle job(CreateJobObjectW(nullptr, nullptr));
    if (!job.IsOpen()) throw LastFailure();
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits)) ==
        FALSE)
        throw LastFailure();
    return job;
}

// The process within the job from its first instruction on, and without the console: an interrupt there is
// for its parent, who ends it, and where there is no console none opens for it.
Handle Start(const std::vector<std::string>& words, const PipeEnds& pipe, const Handle& job) {
    const Handle nothing = OpenNothing();
    const HandleList handles(nothing.Get(), pipe.writing.Get());
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof(startup);
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = nothing.Get();
    startup.StartupInfo.hStdOutput = nothing.Get();
    startup.StartupInfo.hStdError = pipe.writing.Get();
    startup.lpAttributeList = handles.Get();
    std::wstring line = WidenUtf8(JoinCommandLine(words));
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(WidenUtf8(words.front()).c_str(), line.data(), nullptr, nullptr, TRUE,
                       CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT | DETACHED_PROCESS, nullptr, nullptr,
                       &startup.StartupInfo, &started) == FALSE)
        throw LastFailure();
    Handle process(started.hProcess);
    const Handle thread(started.hThread);
    if (AssignProcessToJobObject(job.Get(), process.Get()) == FALSE ||
        ResumeThread(thread.Get()) == DWORD(-1)) {
        const std::system_error failure = LastFailure();
        TerminateProcess(process.Get(), 1);
        throw failure;
    }
    return process;
}

}  // namespace

// A pipe cannot be waited for with a limit of time, so a thread hears and another one may wait for that.
struct ChildProgram::State {
    Handle job;
    Handle process;
    Handle reading;
    std::thread listener;
    std::mutex mutex;
    std::condition_variable isNew;
    std::string heard;
    bool isSilent = false;  // for good
    size_t most = static_cast<size_t>(-1);

    void Listen() {
        std::array<char, 4096> bytes{};
        DWORD count = 0;
        while (ReadFile(reading.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) !=
                   FALSE &&
               count > 0) {
            const std::lock_guard lock(mutex);
            heard.append(bytes.data(), std::min<size_t>(count, most));
            most -= std::min<size_t>(count, most);
            isNew.notify_one();
        }
        const std::lock_guard lock(mutex);
        isSilent = true;
        isNew.notify_one();
    }
};

ChildProgram::ChildProgram(std::vector<std::string> words) : state_(std::make_unique<State>()) {
    PipeEnds pipe = MakePipe();
    state_->job = MakeJob();
    state_->process = Start(words, pipe, state_->job);
    state_->reading = std::move(pipe.reading);
    pipe.writing.Close();
    state_->listener = std::thread([this] { state_->Listen(); });
}

ChildProgram::~ChildProgram() {
    Kill();
    state_->job.Close();  // ends what the child may have started, which may hold the pipe
    state_->listener.join();
}

ChildProgram::Heard ChildProgram::Listen(std::chrono::milliseconds longest, std::string& said, size_t most) {
    std::unique_lock lock(state_->mutex);
    state_->isNew.wait_for(lock, longest, [this] { return state_->isSilent || !state_->heard.empty(); });
    if (!state_->heard.empty()) {
        said.append(state_->heard, 0, most - said.size());
        state_->most = most - said.size();
        state_->heard.clear();
        return Heard::Words;
    }
    return state_->isSilent ? Heard::End : Heard::Nothing;
}

bool ChildProgram::HasEnded() { return WaitForSingleObject(state_->process.Get(), 0) == WAIT_OBJECT_0; }

void ChildProgram::Kill() {
    if (HasEnded()) return;
    TerminateJobObject(state_->job.Get(), 1);
    WaitForSingleObject(state_->process.Get(), INFINITE);
}

ChildProgram::End ChildProgram::HowEnded() const {
    // Exceptions are the severe ones of the system's numbers, which no program of ours gives as its code.
    constexpr DWORD kLeastException = 0x40000000;
    DWORD code = 0;
    GetExitCodeProcess(state_->process.Get(), &code);
    return {code >= kLeastException, code};
}

std::string DescribeKill(int64_t number) {
    struct Exception {
        DWORD number;
        const char* name;
    };
    constexpr Exception kExceptions[] = {
        {EXCEPTION_ACCESS_VIOLATION, "access violation"},
        {EXCEPTION_STACK_OVERFLOW, "stack overflow"},
        {EXCEPTION_ILLEGAL_INSTRUCTION, "illegal instruction"},
        {EXCEPTION_INT_DIVIDE_BY_ZERO, "division by zero"},
        {EXCEPTION_BREAKPOINT, "breakpoint"},
        {STATUS_CONTROL_C_EXIT, "interrupt"},
        {static_cast<DWORD>(STATUS_FATAL_APP_EXIT), "abort"},
    };
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "exception 0x%08llX", static_cast<unsigned long long>(number));
    std::string described = text.data();
    for (const Exception& exception : kExceptions)
        if (exception.number == static_cast<DWORD>(number))
            described.append(" (").append(exception.name).append(")");
    return described;
}

}  // namespace vastrelline
