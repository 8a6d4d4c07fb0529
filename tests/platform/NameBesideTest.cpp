// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "platform/NameBeside.h"

namespace vastrelline {
namespace {

TEST(NameBeside, LongNamesGetOneThatTells) {
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 25), ".vastrelline-01234567.tmp");
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 255), ".vastrelline-01234567.tmp");
}

TEST(NameBeside, ShortNamesGetAShortOne) {
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 24), ".v01234567~");
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 11), ".v01234567~");
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 10), ".v0123456~");
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 5), ".v01~");
    EXPECT_EQ(NameBeside(0x0123456789ABCDEFU, 1), ".v01~");
}

TEST(NameBeside, IsNeverLongerThanTheNameFromFiveOn) {
    for (size_t length = 5; length < 300; ++length) EXPECT_LE(NameBeside(1, length).size(), length);
}

TEST(HashName, IsThePublishedOne) {
    // FNV-1a of 64 bits, from its own list of examples.
    EXPECT_EQ(HashName(std::string_view("")), 0xCBF29CE484222325U);
    EXPECT_EQ(HashName(std::string_view("a")), 0xAF63DC4C8601EC8CU);
    EXPECT_EQ(HashName(std::string_view("foobar")), 0x85944171F73967E8U);
    EXPECT_EQ(HashName(std::wstring_view(L"foobar")), 0x85944171F73967E8U);
    EXPECT_EQ(HashName(std::wstring_view(L"FooBaR")), 0x85944171F73967E8U);
}

}  // namespace
}  // namespace vastrelline
