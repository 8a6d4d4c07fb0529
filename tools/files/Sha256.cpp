// SPDX-License-Identifier: Apache-2.0
#include "files/Sha256.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <ios>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/InputFile.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

constexpr std::array<uint32_t, 64> kRounds{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

uint32_t ReadBigEndian(const uint8_t* bytes) {
    return uint32_t{bytes[0]} << 24U | uint32_t{bytes[1]} << 16U | uint32_t{bytes[2]} << 8U | bytes[3];
}

}  // namespace

void Sha256::AddBlock(const uint8_t* block) {
    std::array<uint32_t, 64> words;
    for (size_t i = 0; i < 16; ++i) words[i] = ReadBigEndian(block + 4 * i);
    for (size_t i = 16; i < words.size(); ++i) {
        const uint32_t early = words[i - 15];
        const uint32_t late = words[i - 2];
        const uint32_t sigma0 = std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3U;
        const uint32_t sigma1 = std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10U;
        words[i] = words[i - 16] + sigma0 + words[i - 7] + sigma1;
    }
    auto [a, b, c, d, e, f, g, h] = state_;
    for (size_t i = 0; i < words.size(); ++i) {
        const uint32_t sum1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const uint32_t t1 = h + sum1 + ((e & f) ^ (~e & g)) + kRounds[i] + words[i];
        const uint32_t sum0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const uint32_t t2 = sum0 + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    const std::array<uint32_t, 8> added{a, b, c, d, e, f, g, h};
    for (size_t i = 0; i < state_.size(); ++i) state_[i] += added[i];
}

void Sha256::Add(std::span<const uint8_t> bytes) {
    allBytes_ += bytes.size();
    if (restBytes_ > 0) {
        const std::span<const uint8_t> first = bytes.first(std::min(bytes.size(), kBlockBytes - restBytes_));
        std::copy(first.begin(), first.end(), rest_.data() + restBytes_);
        restBytes_ += first.size();
        bytes = bytes.subspan(first.size());
        if (restBytes_ < kBlockBytes) return;
        AddBlock(rest_.data());
        restBytes_ = 0;
    }
    for (; bytes.size() >= kBlockBytes; bytes = bytes.subspan(kBlockBytes)) AddBlock(bytes.data());
    std::copy(bytes.begin(), bytes.end(), rest_.data());
    restBytes_ = bytes.size();
}

std::string Sha256::Finish() {
    // A one bit, noughts, and the count of bits in the last eight bytes of a block.
    constexpr size_t kCountBytes = 8;
    const uint64_t bits = allBytes_ * 8;
    std::vector<uint8_t> end(1 + (2 * kBlockBytes - 1 - kCountBytes - restBytes_) % kBlockBytes +
                             kCountBytes);
    end.front() = 0x80;
    for (size_t i = 0; i < kCountBytes; ++i) end[end.size() - 1 - i] = static_cast<uint8_t>(bits >> (8 * i));
    Add(end);

    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const uint32_t word : state_)
        for (uint32_t shift = 32; shift > 0; shift -= 4) text += kDigits[word >> (shift - 4) & 15U];
    return text;
}

std::string Sha256Of(std::span<const uint8_t> bytes) {
    Sha256 hash;
    hash.Add(bytes);
    return hash.Finish();
}

std::string Sha256Of(const std::string& text) {
    return Sha256Of(std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

std::string Sha256OfFile(const std::string& path) {
    constexpr size_t kPieceBytes = size_t{1} << 16;
    InputFileSize(path);  // refuses what is no regular file
    errno = 0;
    std::ifstream file(PathOf(path), std::ios::binary);
    std::vector<uint8_t> piece(kPieceBytes);
    Sha256 hash;
    while (file) {
        file.read(reinterpret_cast<char*>(piece.data()), static_cast<std::streamsize>(piece.size()));
        hash.Add({piece.data(), static_cast<size_t>(file.gcount())});
    }
    if (!file.eof()) throw InputError(path, "cannot be read: " + DescribeReason(LastReason()));
    return hash.Finish();
}

}  // namespace vastrelline
