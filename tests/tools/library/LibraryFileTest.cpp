// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "library/LibraryFile.h"

namespace vastrelline {
namespace {

// The test has the tool's parts inside, and no library beside them, unless another test of the same process
// has loaded it before.
TEST(LibraryFile, IsTheProgramWhereNoLibraryIsLoaded) {
    const bool isLoaded = dlopen(VASTRELLINE_LIBRARY, RTLD_NOW | RTLD_NOLOAD) != nullptr;
    const std::filesystem::path expected = isLoaded ? VASTRELLINE_LIBRARY : "tools_tests";
    EXPECT_EQ(std::filesystem::path(LibraryFile()).filename(), expected.filename());
}

}  // namespace
}  // namespace vastrelline
