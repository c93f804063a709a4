// What the reader is measured against.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::bench {

// The floor: maps the file, splits it at line ends and commas, and converts the coordinates of A01. Returns a checksum.
std::uint64_t mapSplitConvert(const std::string& path);

// The plain ways: std::getline, iconv for each line, and a vector of wide strings for its fields. They differ in how
// they split, by finding and cutting or by a stream over the line. They return the number of fields.
std::uint64_t getlineIconvCut(const std::string& path);
std::uint64_t getlineIconvStream(const std::string& path);

} // namespace fenmark::bench
