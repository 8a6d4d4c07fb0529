// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "runs/Worker.h"

namespace vastrelline {

// Whether a process is one of the tool's workers. Of a process that has ended meanwhile there is nothing to
// read.
inline bool IsWorker(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
    const std::string words{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return words.find(kWorkerWord) != std::string::npos;
}

// Of the children only those: the leak checker of a sanitizer build has a child of its own, and waits for it
// for ever if it is killed.
inline std::vector<pid_t> WorkersOf(pid_t process) {
    std::vector<pid_t> workers;
    std::error_code error;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", error)) {
        std::ifstream list(thread.path() / "children");
        for (pid_t child = 0; list >> child;)
            if (IsWorker(child)) workers.push_back(child);
    }
    return workers;
}

}  // namespace vastrelline
