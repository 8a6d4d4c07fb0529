#include <gtest/gtest.h>

#include <filesystem>

#include "library/LibraryFile.h"

namespace vastrelline {
namespace {

// The test has the tool's parts inside, and no library beside them.
TEST(LibraryFile, IsTheProgramWhereNoLibraryIsLoaded) {
    EXPECT_EQ(std::filesystem::path(LibraryFile()).filename(), "tools_tests");
}

}  // namespace
}  // namespace vastrelline
