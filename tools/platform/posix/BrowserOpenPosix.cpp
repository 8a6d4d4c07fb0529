// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>

#include "platform/BrowserOpen.h"

extern char** environ;

namespace vastrelline {

bool OpenInBrowser(const std::string& address) {
    // The desktop's opener in the background of a shell, so that nobody need wait for the browser's end; its
    // words go nowhere.
    std::string words[] = {"/bin/sh", "-c", "command -v \"$0\" || exit 1; \"$0\" \"$1\" &", "xdg-open",
                           address};
    char* const pointers[] = {words[0].data(), words[1].data(), words[2].data(),
                              words[3].data(), words[4].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {0, 1, 2})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    // A group of its own: the terminal's interrupt ends the workbench and not the browser.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    pid_t child = 0;
    const int failure = posix_spawn(&child, pointers[0], &actions, &attributes, pointers, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) return false;
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace vastrelline
