// What the reader is measured against.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::bench {

// The floor: maps the file, splits it at line ends and commas, and converts the coordinates of A01. Returns a checksum.
std::uint64_t mapSplitConvert(const std::string& path);

// The plain way: std::getline, iconv for each line, and a vector of wide strings for its fields. Returns their number.
std::uint64_t getlineIconvSplit(const std::string& path);

} // namespace fenmark::bench
