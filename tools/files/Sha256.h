// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vastrelline {

// SHA-256 (FIPS 180-4) of bytes that come in pieces: by it people and programs tell that two files or frames
// are the same without having both.
class Sha256 {
public:
    void Add(std::span<const uint8_t> bytes);

    // 64 lower-case hexadecimal digits; the object is spent.
    std::string Finish();

private:
    static constexpr size_t kBlockBytes = 64;

    void AddBlock(const uint8_t* block);

    // The fractions of the square roots of the first eight primes.
    std::array<uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<uint8_t, kBlockBytes> rest_{};
    size_t restBytes_ = 0;
    uint64_t allBytes_ = 0;
};

std::string Sha256Of(std::span<const uint8_t> bytes);

// The same of a text's bytes.
std::string Sha256Of(const std::string& text);

// Of a file of any size, a piece of which is held at a time.
//
// Errors   InputError: missing, no regular file, unreadable
std::string Sha256OfFile(const std::string& path);

}  // namespace vastrelline
