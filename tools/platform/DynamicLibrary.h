// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// How the library's file is called on this system.
extern const char* const kLibraryLeaf;

// A library that stays loaded until the process ends.
class DynamicLibrary {
public:
    // reason   why it could not be loaded; empty: it is
    static DynamicLibrary Load(const std::string& path, std::string& reason);

    // nullptr: it exports nothing of that name
    void* Find(const char* name) const;

private:
    void* handle_ = nullptr;
};

// The file of the library that this process has loaded; empty where none is.
std::string FindLoadedLibrary();

// From here on what the library with this function would show in a window is a line on standard error: nobody
// sits before a worker. Nothing to do where the library has no windows.
void PrintMessageBoxes(void* function);

}  // namespace vastrelline
