// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/windows/CommandText.h"
// after windows.h, which it needs
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

std::vector<std::string> SplitAsTheSystem(const std::string& line) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
        CommandLineToArgvW(WidenUtf8(line).c_str(), &count), LocalFree);
    std::vector<std::string> split;
    for (int i = 0; i < count; ++i) split.push_back(NarrowToUtf8(words.get()[i]));
    return split;
}

TEST(CommandText, IsSplitIntoTheSameWords) {
    const std::vector<std::string> words{
        "C:\\a folder\\x.exe", "",     "two words",   "a\"b",         "ends with \\",
        "C:\\two\\\\levels",   "\\\"", "\\\\\"x\\\\", "Zähne 歯.png", "tab\there",
        "%PATH% & | < >"};
    EXPECT_EQ(SplitAsTheSystem(JoinCommandLine(words)), words);
}

TEST(CommandText, CountsBackslashesBeforeMarksDouble) {
    EXPECT_EQ(JoinCommandLine({"a", "b\\"}), "\"a\" \"b\\\\\"");
    EXPECT_EQ(JoinCommandLine({"a\\\"b"}), "\"a\\\\\\\"b\"");
}

}  // namespace
}  // namespace vastrelline
