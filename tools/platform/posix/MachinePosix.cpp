// SPDX-License-Identifier: Apache-2.0
#include <sys/utsname.h>

#include <fstream>

#include "platform/Machine.h"

namespace vastrelline {
namespace {

std::string ProcessorName() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.starts_with("model name") && line.find(": ") != std::string::npos)
            return line.substr(line.find(": ") + 2);
    return {};
}

}  // namespace

MachineNames AskMachine() {
    MachineNames machine;
    utsname names{};
    if (uname(&names) == 0) machine = {names.nodename, names.sysname, names.release, names.machine, {}};
    machine.processor = ProcessorName();
    return machine;
}

}  // namespace vastrelline
