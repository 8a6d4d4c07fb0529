// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "ToolProgram.h"

namespace vastrelline {

ToolProcess::ToolProcess(const TemporaryFolder& folder, const std::vector<std::string>& arguments)
    : folder_(folder.Path()) {
    std::vector<std::string> words{VASTRELLINE_TOOL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    const std::string report = (folder_ / "report.txt").string();
    const std::string errors = (folder_ / "errors.txt").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, report.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), flags, 0600);
    pid_t child = 0;
    const int failure = posix_spawn(&child, VASTRELLINE_TOOL, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("the tool does not start");
    number_ = child;
}

ToolProcess::~ToolProcess() {
    if (number_ == kNone) return;
    const pid_t child = static_cast<pid_t>(number_);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

void ToolProcess::Interrupt() const { kill(static_cast<pid_t>(number_), SIGINT); }

ToolRun ToolProcess::Await() {
    int status = 0;
    const pid_t child = static_cast<pid_t>(std::exchange(number_, kNone));
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        throw std::runtime_error("the tool crashed");
    return {WEXITSTATUS(status), ReadBytes(folder_ / "report.txt"), ReadBytes(folder_ / "errors.txt")};
}

}  // namespace vastrelline
