// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "library/ExportRequest.h"

namespace vastrelline {
namespace {

TEST(ExportRequest, HasTraitsOfEveryKindInTheirOrder) {
    for (const ExportTraits& traits : AllExports()) EXPECT_EQ(&TraitsOf(traits.kind), &traits);
    EXPECT_EQ(AllExports().size(), 6U);
}

TEST(ExportRequest, IsFoundByItsWholeNameOrItsEnd) {
    for (const ExportTraits& traits : AllExports()) EXPECT_EQ(FindExport(traits.name), &traits);
    EXPECT_EQ(FindExport("imageprocessing_ns")->kind, ExportKind::NS);
    EXPECT_EQ(FindExport("S")->kind, ExportKind::S);
    EXPECT_EQ(FindExport("ne")->kind, ExportKind::NE);
    EXPECT_EQ(FindExport("CR")->kind, ExportKind::CR);
    for (const char* name : {"", "_N", "ImageProcessingX", "Image", "X"})
        EXPECT_EQ(FindExport(name), nullptr) << name;
}

TEST(ExportRequest, CodesHaveWords) {
    for (int32_t code = 0; code <= 6; ++code) EXPECT_NE(ExportCodeText(code), "an unknown code") << code;
    EXPECT_EQ(ExportCodeText(7), "an unknown code");
    EXPECT_EQ(ExportCodeText(-1), "an unknown code");
}

}  // namespace
}  // namespace vastrelline
