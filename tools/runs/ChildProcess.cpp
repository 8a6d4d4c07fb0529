// SPDX-License-Identifier: Apache-2.0
#include "runs/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <thread>

#include "messages/ToolError.h"
#include "runs/Cancellation.h"

namespace vastrelline {
namespace {

using Clock = std::chrono::steady_clock;

ProcessingError CannotStart(const std::string& program, int reason) {
    return {program, "cannot be started: " + std::generic_category().message(reason)};
}

// Both ends of a pipe; what is left open at the end is closed.
class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) throw CannotStart("a pipe", errno);
    }
    ~Pipe() {
        for (const int end : ends_)
            if (end >= 0) close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int ReadEnd() const { return ends_[0]; }
    int WriteEnd() const { return ends_[1]; }
    void CloseWriteEnd() {
        close(ends_[1]);
        ends_[1] = -1;
    }

private:
    std::array<int, 2> ends_{-1, -1};
};

pid_t Start(std::vector<std::string>& words, const Pipe& pipe) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, pipe.WriteEnd(), STDERR_FILENO);
    pid_t child = 0;
    const int failure =
        posix_spawn(&child, words.front().c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw CannotStart(words.front(), failure);
    return child;
}

// Why a child that still runs has to stop now, if there is a reason.
std::optional<ChildEnd::Kind> FindReasonToStop(Clock::time_point deadline) {
    if (IsCancelled()) return ChildEnd::Kind::Cancelled;
    if (Clock::now() >= deadline) return ChildEnd::Kind::TimedOut;
    return std::nullopt;
}

// Takes what the child says until it closes its end, or gives the reason to stop it.
std::optional<ChildEnd::Kind> Listen(int end, Clock::time_point deadline, const std::function<void()>& onWait,
                                     std::string& said) {
    constexpr int kLookMs = 50;  // how often the clock and the wish to end are looked at
    while (true) {
        if (const auto reason = FindReasonToStop(deadline)) return reason;
        if (onWait) onWait();
        pollfd watched{end, POLLIN, 0};
        if (poll(&watched, 1, kLookMs) <= 0) continue;
        std::array<char, 4096> bytes{};
        const ssize_t count = read(end, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return std::nullopt;
        said.append(bytes.data(), std::min(static_cast<size_t>(count), kMostSaid - said.size()));
    }
}

// Waits for the end of a child that says nothing more, or gives the reason to stop it.
std::optional<ChildEnd::Kind> Await(pid_t child, Clock::time_point deadline, int& status) {
    constexpr std::chrono::milliseconds kLongestNap{20};
    for (std::chrono::microseconds nap{100}; waitpid(child, &status, WNOHANG) == 0;) {
        if (const auto reason = FindReasonToStop(deadline)) return reason;
        std::this_thread::sleep_for(nap);
        nap = std::min<std::chrono::microseconds>(2 * nap, kLongestNap);
    }
    return std::nullopt;
}

int Kill(pid_t child) {
    int status = 0;
    kill(child, SIGKILL);
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return status;
}

}  // namespace

std::string OwnProgram() {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) throw ProcessingError({}, "the tool does not find its own file: " + error.message());
    return path.string();
}

ChildEnd RunChild(std::vector<std::string> words, std::optional<std::chrono::milliseconds> timeout,
                  const std::function<void()>& onWait) {
    const Clock::time_point deadline = timeout ? Clock::now() + *timeout : Clock::time_point::max();
    Pipe pipe;
    const pid_t child = Start(words, pipe);
    pipe.CloseWriteEnd();
    ChildEnd end;
    int status = 0;
    std::optional<ChildEnd::Kind> stop = Listen(pipe.ReadEnd(), deadline, onWait, end.said);
    if (!stop) stop = Await(child, deadline, status);
    if (stop) status = Kill(child);
    if (WIFEXITED(status)) {
        end.number = WEXITSTATUS(status);
    } else {
        end.kind = ChildEnd::Kind::Killed;
        end.number = WTERMSIG(status);
    }
    // An interrupt of the terminal reaches the child, too.
    if (stop)
        end.kind = *stop;
    else if (end.kind == ChildEnd::Kind::Killed && IsCancelled())
        end.kind = ChildEnd::Kind::Cancelled;
    return end;
}

}  // namespace vastrelline
