// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "profile_text/CaseFolding.h"

namespace vastrelline {
namespace {

struct LetterPair {
    const char* name;
    wchar_t upper;
    wchar_t lower;
};

class FoldCaseTest : public testing::TestWithParam<LetterPair> {};

TEST_P(FoldCaseTest, UpperAndLowerCaseFoldToTheLowerOne) {
    EXPECT_EQ(FoldCase(GetParam().upper), GetParam().lower);
    EXPECT_EQ(FoldCase(GetParam().lower), GetParam().lower);
}

// The letters are written out; both ends of every run stand here.
INSTANTIATE_TEST_SUITE_P(
    Letters, FoldCaseTest,
    testing::Values(
        LetterPair{"A", L'A', L'a'}, LetterPair{"Z", L'Z', L'z'}, LetterPair{"AGrave", L'\u00C0', L'\u00E0'},
        LetterPair{"ODiaeresis", L'\u00D6', L'\u00F6'}, LetterPair{"OStroke", L'\u00D8', L'\u00F8'},
        LetterPair{"Thorn", L'\u00DE', L'\u00FE'}, LetterPair{"AMacron", L'\u0100', L'\u0101'},
        LetterPair{"IOgonek", L'\u012E', L'\u012F'}, LetterPair{"LAcute", L'\u0139', L'\u013A'},
        LetterPair{"NCaron", L'\u0147', L'\u0148'}, LetterPair{"Eng", L'\u014A', L'\u014B'},
        LetterPair{"YDiaeresis", L'\u0178', L'\u00FF'}, LetterPair{"ZCaron", L'\u017D', L'\u017E'},
        LetterPair{"AlphaTonos", L'\u0386', L'\u03AC'}, LetterPair{"EpsilonTonos", L'\u0388', L'\u03AD'},
        LetterPair{"OmicronTonos", L'\u038C', L'\u03CC'}, LetterPair{"OmegaTonos", L'\u038F', L'\u03CE'},
        LetterPair{"Alpha", L'\u0391', L'\u03B1'}, LetterPair{"Rho", L'\u03A1', L'\u03C1'},
        LetterPair{"Sigma", L'\u03A3', L'\u03C3'}, LetterPair{"FinalSigma", L'\u03C2', L'\u03C3'},
        LetterPair{"Omega", L'\u03A9', L'\u03C9'}, LetterPair{"Io", L'\u0401', L'\u0451'},
        LetterPair{"CyrillicA", L'\u0410', L'\u0430'}, LetterPair{"Ya", L'\u042F', L'\u044F'},
        LetterPair{"Ghe", L'\u0490', L'\u0491'}, LetterPair{"Palochka", L'\u04C0', L'\u04CF'},
        LetterPair{"ZheBreve", L'\u04C1', L'\u04C2'}, LetterPair{"Schwa", L'\u04D8', L'\u04D9'},
        LetterPair{"EHookAndCircumflex", L'\u1EC2', L'\u1EC3'}, LetterPair{"SharpS", L'\u1E9E', L'\u00DF'},
        LetterPair{"FullWidthZ", L'\uFF3A', L'\uFF5A'}),
    [](const auto& test) { return test.param.name; });

TEST(FoldCase, WhatIsNoLetterOrHasNoOneToOnePartnerStays) {
    for (const wchar_t character :
         {L'\0', L'@', L'[', L'`', L'{', L'5', L'\u00D7', L'\u00F7', L'\u00DF', L'\u0130', L'\u0131',
          L'\u0138', L'\u0149', L'\u03A2', L'\u0482', L'\u05D0', L'\u6F22', static_cast<wchar_t>(0xDCC4),
          static_cast<wchar_t>(0x1F600)})
        EXPECT_EQ(FoldCase(character), character) << static_cast<uint32_t>(character);
}

TEST(EqualFolded, ComparesWholeTexts) {
    EXPECT_TRUE(EqualFolded(L"", L""));
    EXPECT_TRUE(EqualFolded(L"Key\u00C9", L"kEY\u00E9"));
    EXPECT_FALSE(EqualFolded(L"key", L"key1"));
    EXPECT_FALSE(EqualFolded(L"key1", L"key"));
    EXPECT_FALSE(EqualFolded(L"kez", L"key"));
}

}  // namespace
}  // namespace vastrelline
