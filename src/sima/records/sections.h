// The sections of a file: the one table of their letters, which the reader, the notes on a file and the way from a
// record to its object take them from.
#pragma once

#include "sima/text/record_code.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fenmark::sima {

enum class Section : std::uint8_t { Coordinates, Lots, Route, Longitudinal, CrossSection };

struct SectionEntry {
    Section section;
    std::string_view opening; // code of the record that opens it; its letter names the section
    std::string_view end;     // code of the record that ends it
};

inline constexpr std::array<SectionEntry, 5> kSections = {{
    {Section::Coordinates, "A00", "A99"},
    {Section::Lots, "D00", "D99"},
    {Section::Route, "F00", "F99"},
    {Section::Longitudinal, "H00", "H99"},
    {Section::CrossSection, "I00", "I99"},
}};

constexpr const SectionEntry& entryOf(Section section) {
    return kSections[static_cast<std::size_t>(section)];
}

// The section that a record with this code opens; null if it opens none.
constexpr const SectionEntry* sectionOpenedBy(RecordCode code) {
    for (const SectionEntry& entry : kSections) {
        if (recordCode(entry.opening) == code) {
            return &entry;
        }
    }
    return nullptr;
}

// The section that a record with this code ends; null if it ends none.
constexpr const SectionEntry* sectionEndedBy(RecordCode code) {
    for (const SectionEntry& entry : kSections) {
        if (recordCode(entry.end) == code) {
            return &entry;
        }
    }
    return nullptr;
}

// Whether a table that stands beside this one has a row for each section, in order, by the rows' member `section`.
template <typename Table>
constexpr bool inOrderOfSections(const Table& table) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (static_cast<std::size_t>(table[i].section) != i) {
            return false;
        }
    }
    return table.size() == kSections.size();
}
static_assert(inOrderOfSections(kSections));

} // namespace fenmark::sima
