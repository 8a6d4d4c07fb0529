// SPDX-License-Identifier: Apache-2.0
#include "runs/Worker.h"

#include <exception>
#include <iostream>
#include <new>
#include <utility>

#include "files/PrivateFolder.h"
#include "messages/ToolError.h"
#include "platform/ChildProgram.h"
#include "platform/MemoryLimit.h"
#include "platform/OwnProcess.h"
#include "runs/ChildProcess.h"
#include "runs/WorkerJob.h"

namespace vastrelline {
namespace {

constexpr int kDone = 0;
constexpr int kNotDone = 1;
constexpr int kNoMemory = 2;
constexpr int kNotWritten = 3;
constexpr int kNotLoaded = 4;
constexpr int kNotTaken = 5;

// The last line that was said, as a reason.
std::string LastLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text.substr(text.rfind('\n') + 1);
}

void TestEnd(const ChildEnd& end, const ExportRequest& request) {
    constexpr const char* kNothingWritten = "no picture was written";
    switch (end.kind) {
        case ChildEnd::Kind::Cancelled:
            throw CancelledError();
        case ChildEnd::Kind::TimedOut:
            throw ProcessingError(
                {},
                "the run took longer than " +
                    std::to_string(request.timeout.value_or(std::chrono::milliseconds{0}).count()) +
                    " ms and was ended",
                "--timeout gives it more");
        case ChildEnd::Kind::Killed:
            throw ProcessingError({}, "the run was ended by " + DescribeKill(end.number), kNothingWritten);
        case ChildEnd::Kind::Exited:
            break;
    }
    if (end.number == kNoMemory) throw std::bad_alloc();
    if (end.number == kNotWritten) throw OutputError({}, LastLine(end.said));
    if (end.number == kNotLoaded) throw InputError(request.library, LastLine(end.said));
    if (end.number == kNotTaken) throw InputError({}, LastLine(end.said));
    if (end.number != kDone)
        throw ProcessingError({}, "the run failed: " + LastLine(end.said), kNothingWritten);
}

int DoJob(const std::string& folder, ExportRequest request, const ExportCaller& callExport) {
    int32_t code = 0;
    try {
        code = callExport(request);
    } catch (const InputError& error) {  // the request's library; frame and profile are looked at before
        if (error.Where() != request.library) {  // a text that the library does not take
            std::cerr << error.what() << '\n';
            return kNotTaken;
        }
        std::cerr << error.What() << (error.Remedy().empty() ? "" : "; ") << error.Remedy() << '\n';
        return kNotLoaded;
    }
    WriteJobResult(folder, code, request);
    return kDone;
}

}  // namespace

int32_t CallInWorker(ExportRequest& request) {
    const PrivateFolder folder;
    WriteJob(folder.Path().string(), request);
    const ChildEnd end =
        RunChild({OwnProgram(), kWorkerWord, folder.Path().string()}, request.timeout, request.onWait);
    TestEnd(end, request);
    const int32_t code = ReadJobResult(folder.Path().string(), request);
    request.record.said = end.said;
    return code;
}

int RunWorker(const std::string& folder, const ExportCaller& callExport) {
    ServeParent();
    try {
        ExportRequest request = ReadJob(folder);
        if (request.memoryLimit) LimitMemory(*request.memoryLimit);
        return DoJob(folder, std::move(request), callExport);
    } catch (const std::bad_alloc&) {
        return kNoMemory;
    } catch (const OutputError& error) {
        std::cerr << error.what() << '\n';
        return kNotWritten;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kNotDone;
    }
}

}  // namespace vastrelline
