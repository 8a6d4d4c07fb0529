// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/ChildProgram.h"

namespace vastrelline {
namespace {

// Both ends of a pipe; what is left open at the end is closed.
class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
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

pid_t Start(std::vector<std::string> words, const Pipe& pipe) {
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
    if (failure != 0) throw std::system_error(failure, std::generic_category());
    return child;
}

}  // namespace

struct ChildProgram::State {
    Pipe pipe;
    pid_t process = 0;
    bool hasEnded = false;
    int status = 0;
};

ChildProgram::ChildProgram(std::vector<std::string> words) : state_(std::make_unique<State>()) {
    state_->process = Start(std::move(words), state_->pipe);
    state_->pipe.CloseWriteEnd();
}

ChildProgram::~ChildProgram() { Kill(); }

ChildProgram::Heard ChildProgram::Listen(std::chrono::milliseconds longest, std::string& said, size_t most) {
    pollfd watched{state_->pipe.ReadEnd(), POLLIN, 0};
    if (poll(&watched, 1, static_cast<int>(longest.count())) <= 0) return Heard::Nothing;
    std::array<char, 4096> bytes{};
    const ssize_t count = read(state_->pipe.ReadEnd(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) return Heard::Nothing;
    if (count <= 0) return Heard::End;
    said.append(bytes.data(), std::min(static_cast<size_t>(count), most - said.size()));
    return Heard::Words;
}

bool ChildProgram::HasEnded() {
    if (!state_->hasEnded) state_->hasEnded = waitpid(state_->process, &state_->status, WNOHANG) != 0;
    return state_->hasEnded;
}

void ChildProgram::Kill() {
    if (HasEnded()) return;
    kill(state_->process, SIGKILL);
    while (waitpid(state_->process, &state_->status, 0) < 0 && errno == EINTR) continue;
    state_->hasEnded = true;
}

ChildProgram::End ChildProgram::HowEnded() const {
    if (WIFEXITED(state_->status)) return {false, WEXITSTATUS(state_->status)};
    return {true, WTERMSIG(state_->status)};
}

std::string DescribeKill(int64_t number) {
    return std::string("signal ")
        .append(std::to_string(number))
        .append(" (")
        .append(strsignal(static_cast<int>(number)))  // NOLINT(concurrency-mt-unsafe): no name is made here
        .append(")");
}

}  // namespace vastrelline
