// SPDX-License-Identifier: Apache-2.0
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>

#include "platform/OwnProcess.h"

namespace vastrelline {

const char* const kTemporaryFolderHint = "TMPDIR names another place for temporary files";

const ProcessNumber kGreatestProcessNumber = std::numeric_limits<pid_t>::max();

ProcessNumber OwnProcessNumber() { return getpid(); }

bool IsProcessAlive(ProcessNumber number) {
    return kill(static_cast<pid_t>(number), 0) == 0 || errno != ESRCH;
}

std::string OwnProgramFile() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::optional<std::vector<std::string>> TakeCommandLine(int argc, const char* const* argv) {
    return std::vector<std::string>(argv, argv + argc);
}

std::optional<std::string> EnvironmentText(const char* name) {
    const char* const text = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets variables here
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

std::optional<std::string> HomeFolder() { return EnvironmentText("HOME"); }

void PrepareStandardStreams() {}

bool IsErrorStreamTerminal() { return isatty(STDERR_FILENO) == 1; }

void ServeParent() {
    // Nobody wants the result of a worker whose parent is gone.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

}  // namespace vastrelline
