// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline::digest {

// SHA-256 (FIPS 180-4) of bytes that come in pieces.
class Sha256 {
public:
    void Add(const void* data, size_t size);
    void Add(std::string_view bytes) { Add(bytes.data(), bytes.size()); }

    // A piece with its length before it, so that no two lists of pieces run together to the same bytes.
    void AddPiece(std::string_view bytes);

    // 64 lower-case hexadecimal digits; the object is spent.
    std::string Finish();

private:
    static constexpr size_t kBlockBytes = 64;

    void AddBlock(const uint8_t* block);

    std::array<uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<uint8_t, kBlockBytes> rest_{};
    size_t restBytes_ = 0;
    uint64_t allBytes_ = 0;
};

std::string Sha256Of(std::string_view bytes);

}  // namespace vastrelline::digest
