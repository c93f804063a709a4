// How many fields the records with values have: the one table, for the validators and for notes on a file.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace fenmark::sima {

struct FieldCount {
    std::string_view code;
    std::size_t fields; // with the code, and with the empty field behind the last comma
};

// An A01 may lack its last field.
inline constexpr std::array<FieldCount, 14> kFieldCounts = {{
    {"A01", 7},
    {"B01", 4},
    {"B03", 3},
    {"C01", 4},
    {"C02", 5},
    {"C03", 4},
    {"D00", 5},
    {"F00", 6},
    {"G00", 4},
    {"H00", 4},
    {"H01", 7},
    {"I00", 4},
    {"I01", 6},
    {"I02", 5},
}};

// Of a record whose number of fields is fixed; none for every other code.
constexpr std::optional<std::size_t> fieldCountOf(std::string_view code) {
    for (const FieldCount& entry : kFieldCounts) {
        if (entry.code == code) {
            return entry.fields;
        }
    }
    return std::nullopt;
}

} // namespace fenmark::sima
