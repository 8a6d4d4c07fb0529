// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "platform/Paths.h"

namespace vastrelline {
namespace {

TEST(PathsPosix, BothSlashesSeparate) {
    EXPECT_EQ(FolderOfPath(L"a/b.ini"), L"a");
    EXPECT_EQ(FolderOfPath(L"a\\b/c.ini"), L"a\\b");
    EXPECT_EQ(FolderOfPath(L"a/b\\c.ini"), L"a/b");
    EXPECT_EQ(FolderOfPath(L"/b.ini"), L"");
}

TEST(PathsPosix, OnlyTheFileNameIsLowered) {
    EXPECT_EQ(LowerCaseFileName(L"/Data/SET\\00_OrgImage.RAW"), L"/Data/SET\\00_orgimage.raw");
    EXPECT_EQ(LowerCaseFileName(L"C:\\Data/IMAGE\u00C4.RAW"), L"C:\\Data/image\u00C4.raw");
    EXPECT_EQ(LowerCaseFileName(L"/Data/"), L"/Data/");
}

}  // namespace
}  // namespace vastrelline
