// Chains beside bare floors: point at distance, sorted arrays and nearest point.
#pragma once

#include <string_view>
#include <vector>

namespace fenmark::bench {

using Words = std::vector<std::string_view>;

// Prints the table. With words, runs once and without a table what they name: "chain point", "chain sorted" and so on.
void compareChains(const Words& words);

} // namespace fenmark::bench
