// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// The examples of the standard.
TEST(Sha256, GivesThePublishedHashes) {
    EXPECT_EQ(Sha256Of(std::string()), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Of(std::string("abc")),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Of(BytesOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256Of(BytesOf(std::string(1000000, 'a'))),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, DoesNotDependOnHowTheBytesAreCut) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += static_cast<char>(i);
    for (size_t size = 0; size <= text.size(); ++size) {
        const std::string_view bytes = std::string_view(text).substr(0, size);
        const std::string whole = Sha256Of(BytesOf(bytes));
        for (const size_t cut : {size / 3, size / 2, size - size / 5}) {
            Sha256 hash;
            hash.Add(BytesOf(bytes.substr(0, cut)));
            hash.Add(BytesOf(bytes.substr(cut)));
            EXPECT_EQ(hash.Finish(), whole) << size << " cut at " << cut;
        }
    }
}

TEST(Sha256, OfAFileIsThatOfItsBytes) {
    const TemporaryFolder folder;
    for (const size_t size : {size_t{0}, size_t{65535}, size_t{65536}, size_t{200001}}) {
        const std::string text(size, 'v');
        WriteBytes(folder.Path() / "a", text);
        EXPECT_EQ(Sha256OfFile(folder.Narrow("a")), Sha256Of(BytesOf(text))) << size;
    }
    EXPECT_THROW(Sha256OfFile(folder.Narrow("missing")), InputError);
    EXPECT_THROW(Sha256OfFile(folder.Path().string()), InputError);
}

}  // namespace
}  // namespace vastrelline
