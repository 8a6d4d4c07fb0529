// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vastrelline {

using ProcessNumber = int64_t;

ProcessNumber OwnProcessNumber();

// No process has a greater one.
extern const ProcessNumber kGreatestProcessNumber;

// Whether a process of that number runs; true where the system does not tell.
bool IsProcessAlive(ProcessNumber number);

// The file of the running program; empty where the system does not tell it.
std::string OwnProgramFile();

// The words of the command line, the program's own name first, as UTF-8 on Windows; nothing where one of them
// is no text.
std::optional<std::vector<std::string>> TakeCommandLine(int argc, const char* const* argv);

// A variable of the environment; nothing where it is not set.
std::optional<std::string> EnvironmentText(const char* name);

// How a user moves what is made for a moment only.
extern const char* const kTemporaryFolderHint;

// The folder of a user's own things; nothing where there is none.
std::optional<std::string> HomeFolder();

// Bytes go through the standard streams as they are, and a terminal takes texts for UTF-8.
void PrepareStandardStreams();

bool IsErrorStreamTerminal();

// For processes that work for another one: no window opens when they crash, and where the system needs their
// help they end with their parent.
void ServeParent();

}  // namespace vastrelline
