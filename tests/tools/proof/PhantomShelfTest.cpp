// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "phantom/PhantomFrame.h"
#include "proof/PhantomShelf.h"

namespace vastrelline {
namespace {

TEST(PhantomShelf, HasThePhantomThatIsAskedForAndKeepsIt) {
    PhantomShelf shelf;
    const Frame& one = shelf.Find({{30, 40}, 1.0, 1});
    const Frame& other = shelf.Find({{30, 40}, 1.0, 2});
    EXPECT_EQ(one.pixels, MakePhantomFrame({30, 40}, 1.0, 1).pixels);
    EXPECT_EQ(other.pixels, MakePhantomFrame({30, 40}, 1.0, 2).pixels);
    EXPECT_EQ(&shelf.Find({{30, 40}, 1.0, 1}), &one);
}

}  // namespace
}  // namespace vastrelline
