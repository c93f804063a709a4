// The digest by which a file is known again: SHA-256 (FIPS 180-4).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::drawing {

// "sha256:" and 64 lower-case hexadecimal digits.
std::string digestOf(std::string_view bytes);

struct FileDigest {
    std::uint64_t size = 0; // bytes
    std::string digest;     // as digestOf
};

// Reads the file once; nothing if it cannot be read to its end. Takes some 4 ms a megabyte and needs nobody else: where
// time counts, run it beside the import.
std::optional<FileDigest> digestFile(const std::string& path);

} // namespace fenmark::drawing
