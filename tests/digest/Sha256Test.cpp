// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "Sha256.h"

namespace vastrelline::digest {
namespace {

struct VectorCase {
    const char* name;
    std::string message;
    const char* hash;
};

class Sha256Vector : public testing::TestWithParam<VectorCase> {};

TEST_P(Sha256Vector, IsGiven) { EXPECT_EQ(Sha256Of(GetParam().message), GetParam().hash); }

// The examples that were published with FIPS 180-4.
INSTANTIATE_TEST_SUITE_P(
    Published, Sha256Vector,
    testing::Values(
        VectorCase{"Empty", "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        VectorCase{"Abc", "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        VectorCase{"Bits448", "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
                   "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        VectorCase{"MillionTimesA", std::string(1000000, 'a'),
                   "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}),
    [](const auto& test) { return test.param.name; });

TEST(Sha256, PiecesGiveTheHashOfTheirWhole) {
    const std::string message(300, 'x');
    const std::string whole = Sha256Of(message);
    for (const size_t piece : {1U, 7U, 55U, 56U, 63U, 64U, 65U, 128U}) {
        Sha256 hash;
        for (size_t at = 0; at < message.size(); at += piece) hash.Add(message.substr(at, piece));
        EXPECT_EQ(hash.Finish(), whole) << piece;
    }
}

TEST(Sha256, PiecesWithTheirLengthDoNotRunTogether) {
    Sha256 first;
    first.AddPiece("ab");
    first.AddPiece("c");
    Sha256 second;
    second.AddPiece("a");
    second.AddPiece("bc");
    EXPECT_NE(first.Finish(), second.Finish());
}

}  // namespace
}  // namespace vastrelline::digest
