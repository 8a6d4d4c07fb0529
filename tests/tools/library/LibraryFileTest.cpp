// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "library/LibraryFile.h"
#include "platform/DynamicLibrary.h"
#include "platform/OwnProcess.h"

namespace vastrelline {
namespace {

// The test has the tool's parts inside, and no library beside them, unless another test of the same process
// has loaded it before.
TEST(LibraryFile, IsTheProgramWhereNoLibraryIsLoaded) {
    const std::filesystem::path expected =
        FindLoadedLibrary().empty() ? OwnProgramFile() : VASTRELLINE_LIBRARY;
    EXPECT_EQ(std::filesystem::path(LibraryFile()).filename(), expected.filename());
}

}  // namespace
}  // namespace vastrelline
