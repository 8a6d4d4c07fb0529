// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "library/ExportFunctions.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// A library of the system's.
#ifdef _WIN32
constexpr const char* kStrangeLibrary = "C:\\windows\\system32\\user32.dll";
#else
constexpr const char* kStrangeLibrary = "libm.so.6";
#endif

using testing::HasSubstr;
using testing::Not;

std::string ReasonAgainst(const std::string& library, const std::string& instructions) {
    try {
        static_cast<void>(LoadExportFunctions(library, instructions));
    } catch (const InputError& error) {
        EXPECT_EQ(error.Where(), library);
        return error.What();
    }
    return "was loaded";
}

TEST(ExportFunctions, AreThoseOfTheNamedFile) {
    const ExportFunctions functions = LoadExportFunctions(VASTRELLINE_LIBRARY, "");
    uint16_t pixel = 1;
    EXPECT_EQ(functions.plain(&pixel, nullptr, 1, 1, "no such profile", "A", 0, 0), VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(functions.cr(nullptr, &pixel, 1, 1, "no such profile", "A"), VASTRELLINE_NO_PROFILE);
}

TEST(ExportFunctions, AreNotLookedForInWhatIsNoSuchLibrary) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "text.so", "no library");
    const std::string text = folder.Narrow("text.so");
    EXPECT_THAT(ReasonAgainst(text, ""), HasSubstr("cannot be loaded as a library"));
    EXPECT_THAT(ReasonAgainst(text, ""), Not(HasSubstr(text)));
    EXPECT_THAT(ReasonAgainst(folder.Narrow("none.so"), ""), HasSubstr("cannot be loaded as a library"));
    EXPECT_EQ(ReasonAgainst(kStrangeLibrary, ""), "has no function ImageProcessing");
}

TEST(ExportFunctions, TakeNoSetOfInstructionsUnlessTheLibraryKnowsThat) {
    EXPECT_EQ(ReasonAgainst(VASTRELLINE_LIBRARY, "avx2"), "has no function LimitVastrellineForms");
}

}  // namespace
}  // namespace vastrelline
