// SHA-256 (FIPS 180-4, sections 4.1.2, 4.2.2, 5.1.1, 5.3.3 and 6.2). a to h: working variables; W: message schedule.
#include "drawing/file_digest.h"

#include "platform/paths.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <vector>

namespace fenmark::drawing {

namespace {

constexpr std::size_t kBlock = 64;           // bytes
constexpr std::size_t kReadAtOnce = 1 << 20; // bytes, whole blocks

constexpr std::array<std::uint32_t, 64> kConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

class Sha256 {
  public:
    // Whole blocks.
    void take(std::string_view bytes) {
        for (std::size_t at = 0; at + kBlock <= bytes.size(); at += kBlock) {
            block(bytes.data() + at);
        }
        size_ += bytes.size();
    }
    // What is left behind the last whole block, and the end.
    std::string finish(std::string_view rest) {
        const std::uint64_t bits = (size_ + rest.size()) * 8;
        std::string last(rest);
        last += '\x80';
        while (last.size() % kBlock != kBlock - 8) {
            last += '\0';
        }
        for (int shift = 56; shift >= 0; shift -= 8) {
            last += static_cast<char>(bits >> static_cast<unsigned>(shift));
        }
        take(last);
        constexpr std::string_view kHex = "0123456789abcdef";
        std::string text = "sha256:";
        for (const std::uint32_t word : hash_) {
            for (unsigned shift = 32; shift > 0; shift -= 4) {
                text += kHex[(word >> (shift - 4)) & 0xFU];
            }
        }
        return text;
    }

  private:
    void block(const char* bytes) {
        std::array<std::uint32_t, 64> w;
        for (std::size_t t = 0; t < 16; ++t) {
            const auto byte = [&](std::size_t i) {
                return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[4 * t + i]));
            };
            w[t] = byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3);
        }
        for (std::size_t t = 16; t < 64; ++t) {
            const std::uint32_t x = w[t - 15];
            const std::uint32_t y = w[t - 2];
            const std::uint32_t sigma0 = std::rotr(x, 7) ^ std::rotr(x, 18) ^ (x >> 3U);
            const std::uint32_t sigma1 = std::rotr(y, 17) ^ std::rotr(y, 19) ^ (y >> 10U);
            w[t] = sigma1 + w[t - 7] + sigma0 + w[t - 16];
        }
        auto [a, b, c, d, e, f, g, h] = hash_;
        for (std::size_t t = 0; t < 64; ++t) {
            const std::uint32_t sum1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
            const std::uint32_t t1 = h + sum1 + ((e & f) ^ (~e & g)) + kConstants[t] + w[t];
            const std::uint32_t sum0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
            const std::uint32_t t2 = sum0 + ((a & b) ^ (a & c) ^ (b & c));
            h = g;
            g = f;
            f = e;
            e = d + t1;
            d = c;
            c = b;
            b = a;
            a = t1 + t2;
        }
        const std::array<std::uint32_t, 8> more = {a, b, c, d, e, f, g, h};
        for (std::size_t i = 0; i < hash_.size(); ++i) {
            hash_[i] += more[i];
        }
    }

    std::array<std::uint32_t, 8> hash_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                          0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::uint64_t size_ = 0;
};

} // namespace

std::string digestOf(std::string_view bytes) {
    Sha256 sha;
    const std::size_t whole = bytes.size() - bytes.size() % kBlock;
    sha.take(bytes.substr(0, whole));
    return sha.finish(bytes.substr(whole));
}

std::optional<FileDigest> digestFile(const std::string& path) {
    std::ifstream file(platform::pathOf(path), std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    Sha256 sha;
    FileDigest result;
    std::vector<char> buffer(kReadAtOnce);
    while (true) {
        file.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        const auto count = static_cast<std::size_t>(file.gcount());
        result.size += count;
        if (count == buffer.size()) {
            sha.take({buffer.data(), count});
            continue;
        }
        if (file.bad()) {
            return std::nullopt;
        }
        const std::size_t whole = count - count % kBlock;
        sha.take({buffer.data(), whole});
        result.digest = sha.finish({buffer.data() + whole, count - whole});
        return result;
    }
}

} // namespace fenmark::drawing
