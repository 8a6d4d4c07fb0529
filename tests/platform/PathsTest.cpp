// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "platform/Paths.h"

namespace vastrelline {
namespace {

TEST(FindLastSeparator, EitherSeparates) {
    EXPECT_EQ(FindLastSeparator(L"a\\bc\\d.ini"), 4U);
    EXPECT_EQ(FindLastSeparator(L"a/bc/d.ini"), 4U);
    EXPECT_EQ(FindLastSeparator(L"a/bc\\d.ini"), 4U);
    EXPECT_EQ(FindLastSeparator(L"a\\bc/d.ini"), 4U);
    EXPECT_EQ(FindLastSeparator(L"d.ini"), std::wstring_view::npos);
    EXPECT_EQ(FindLastSeparator(L""), std::wstring_view::npos);
}

TEST(FolderOfPath, ThePartBeforeTheLastSeparator) {
    EXPECT_EQ(FolderOfPath(L"a\\b\\c.ini"), L"a\\b");
    EXPECT_EQ(FolderOfPath(L"a\\b\\"), L"a\\b");
    EXPECT_EQ(FolderOfPath(L"a/b/c.ini"), L"a/b");
    EXPECT_EQ(FolderOfPath(L"C:/set/c.ini"), L"C:/set");
    EXPECT_EQ(FolderOfPath(L"C:set\\c.ini"), L"C:set");
}

TEST(FolderOfPath, APathWithoutSeparatorLiesInTheCurrentFolder) { EXPECT_EQ(FolderOfPath(L"b.ini"), L"."); }

TEST(FolderOfName, ANameBehindADriveLiesInThatDrivesCurrentFolder) {
    EXPECT_EQ(FolderOfName(L"b.ini"), L".");
#ifdef _WIN32
    EXPECT_EQ(FolderOfName(L"C:b.ini"), L"C:.");
#else
    EXPECT_EQ(FolderOfName(L"C:b.ini"), L".");  // a name like any other
#endif
}

TEST(FolderOfPath, AFileInTheRootHasTheEmptyFolder) { EXPECT_EQ(FolderOfPath(L"\\b.ini"), L""); }

TEST(LowerCaseFileName, TheFileNameIsLowered) {
    EXPECT_EQ(LowerCaseFileName(L"00_OrgImage.RAW"), L"00_orgimage.raw");
    EXPECT_EQ(LowerCaseFileName(L""), L"");
}

}  // namespace
}  // namespace vastrelline
