// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Findings.h"
#include "ParsedTree.h"

namespace vastrelline {

namespace {

using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;

// What gives other bits on another machine, or might: functions that are not exact or round as the host
// wants, and conversions between numbers and text.
const std::set<std::string>& ForeignFunctions() {
    static const std::set<std::string> names{
        "acos",   "acosf",     "acosh",  "asin",   "asinh",  "atan",      "atan2",      "atanh",
        "atof",   "beta",      "cbrt",   "cos",    "cosf",   "cosh",      "erf",        "erfc",
        "exp",    "exp2",      "expf",   "expm1",  "fma",    "fmaf",      "from_chars", "fscanf",
        "hypot",  "lgamma",    "llrint", "log",    "log10",  "log1p",     "log2",       "logf",
        "lrint",  "nearbyint", "polar",  "pow",    "powf",   "printf",    "remainder",  "remquo",
        "rint",   "sin",       "sincos", "sinf",   "sinh",   "snprintf",  "sprintf",    "sscanf",
        "stod",   "stof",      "stold",  "strtod", "strtof", "strtold",   "swprintf",   "swscanf",
        "tan",    "tanf",      "tanh",   "tanhf",  "tgamma", "vsnprintf", "vswprintf",  "wcstod",
        "wcstof", "wcstold"};
    return names;
}

// Headers with such functions under names that fit anything, or with streams that print numbers.
const std::set<std::string>& ForeignHeaders() {
    static const std::set<std::string> names{"complex.h", "format",  "iomanip",  "iostream",
                                             "math.h",    "sstream", "tgmath.h", "valarray"};
    return names;
}

// Calls of such functions, whether from std or not; members and other people's functions of these names are
// not meant.
Findings FindForeignMathematics(const ParsedTree& tree) {
    Findings found;
    for (const auto& [path, file] : tree) {
        const auto& tokens = file.text.tokens;
        for (size_t i = 0; i < tokens.size(); ++i) {
            if (!tokens[i].isWord || !ForeignFunctions().contains(tokens[i].text)) continue;
            const std::string before = i > 0 ? tokens[i - 1].text : "";
            const bool isOfStd = before == "::" && i > 1 && tokens[i - 2].text == "std";
            const bool isCall = i + 1 < tokens.size() && tokens[i + 1].text == "(";
            const bool isPlain = before != "::" && before != "." && before != "->" &&
                                 (i == 0 || !tokens[i - 1].isWord || before == "return");
            if (isOfStd || (isCall && isPlain)) {
                found[path + ": " + tokens[i].text] = path + " calls " + tokens[i].text +
                                                      ": not the same everywhere, so use src/elementary, or "
                                                      "profile_text/ValueText.h for text";
            }
        }
        for (const std::string& header : file.text.systemIncludes) {
            if (ForeignHeaders().contains(header))
                found[path + ": " + header] =
                    path + " includes <" + header + ">: it has what is not the same everywhere";
        }
    }
    return found;
}

}  // namespace

TEST(House, ComputesWithItsOwnMathematics) {
    EXPECT_TRUE(IsKept(CompareFindings(FindForeignMathematics(OwnParsedTree("src")), {})));
}

TEST(FindForeignMathematics, FindsCallsAndHeaders) {
    EXPECT_THAT(FindForeignMathematics(ParseTree({{"a/A.cpp",
                                                   "#include <valarray>\ndouble F() { return exp(1.0); }\n"
                                                   "auto g = std::pow;"}})),
                UnorderedElementsAre(Key("a/A.cpp: exp"), Key("a/A.cpp: pow"), Key("a/A.cpp: valarray")));
}

TEST(FindForeignMathematics, LeavesOwnNamesAlone) {
    EXPECT_THAT(FindForeignMathematics(ParseTree(
                    {{"a/A.cpp",
                      "#include <cmath>\nvoid F(LogFile& log) { log.exp(2); Exp(std::sqrt(std::floor(x))); "
                      "int sin = 1; own::cos(sin); // std::exp(1)\n }"}})),
                IsEmpty());
}

}  // namespace vastrelline
