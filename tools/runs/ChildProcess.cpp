// SPDX-License-Identifier: Apache-2.0
#include "runs/ChildProcess.h"

#include <algorithm>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

#include "messages/ToolError.h"
#include "platform/Cancellation.h"
#include "platform/ChildProgram.h"
#include "platform/OwnProcess.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

using Clock = std::chrono::steady_clock;

std::unique_ptr<ChildProgram> Start(std::vector<std::string> words) {
    const std::string program = words.front();
    try {
        return std::make_unique<ChildProgram>(std::move(words));
    } catch (const std::system_error& error) {
        // A workbench runs for days: an update takes its program away meanwhile.
        const bool isGone = error.code() == std::errc::no_such_file_or_directory;
        throw ProcessingError(program, "cannot be started: " + DescribeReason(error.code()),
                              isGone ? "start the tool anew if it was replaced while it ran" : "");
    }
}

// Why a child that still runs has to stop now, if there is a reason.
std::optional<ChildEnd::Kind> FindReasonToStop(Clock::time_point deadline) {
    if (IsCancelled()) return ChildEnd::Kind::Cancelled;
    if (Clock::now() >= deadline) return ChildEnd::Kind::TimedOut;
    return std::nullopt;
}

// Takes what the child says until it closes its end, or gives the reason to stop it.
std::optional<ChildEnd::Kind> Listen(ChildProgram& child, Clock::time_point deadline,
                                     const std::function<void()>& onWait, std::string& said) {
    constexpr std::chrono::milliseconds kLook{50};  // how often the clock and the wish to end are looked at
    while (true) {
        if (const auto reason = FindReasonToStop(deadline)) return reason;
        if (onWait) onWait();
        if (child.Listen(kLook, said, kMostSaid) == ChildProgram::Heard::End) return std::nullopt;
    }
}

// Waits for the end of a child that says nothing more, or gives the reason to stop it.
std::optional<ChildEnd::Kind> Await(ChildProgram& child, Clock::time_point deadline) {
    constexpr std::chrono::milliseconds kLongestNap{20};
    for (std::chrono::microseconds nap{100}; !child.HasEnded();) {
        if (const auto reason = FindReasonToStop(deadline)) return reason;
        std::this_thread::sleep_for(nap);
        nap = std::min<std::chrono::microseconds>(2 * nap, kLongestNap);
    }
    return std::nullopt;
}

}  // namespace

std::string OwnProgram() {
    const std::string path = OwnProgramFile();
    if (path.empty()) throw ProcessingError({}, "the tool does not find its own file");
    return path;
}

ChildEnd RunChild(std::vector<std::string> words, std::optional<std::chrono::milliseconds> timeout,
                  const std::function<void()>& onWait) {
    const Clock::time_point deadline = timeout ? Clock::now() + *timeout : Clock::time_point::max();
    const std::unique_ptr<ChildProgram> child = Start(std::move(words));
    ChildEnd end;
    std::optional<ChildEnd::Kind> stop = Listen(*child, deadline, onWait, end.said);
    if (!stop) stop = Await(*child, deadline);
    child->Kill();
    const ChildProgram::End how = child->HowEnded();
    end.number = how.number;
    if (how.isKilled) end.kind = ChildEnd::Kind::Killed;
    // An interrupt of the terminal reaches the child, too.
    if (stop)
        end.kind = *stop;
    else if (end.kind == ChildEnd::Kind::Killed && IsCancelled())
        end.kind = ChildEnd::Kind::Cancelled;
    return end;
}

}  // namespace vastrelline
