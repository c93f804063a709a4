// What a program should report about a drawing or a package that was opened: codes with values, worded in the user's
// language.
#pragma once

#include "values/language.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::drawing {

enum class StoreNoteCode : std::uint8_t {
    OtherGeometry,        // features of `table` whose geometry is a `name`, not of the layer's kind: left out
    NoPlace,              // features of `table` with an empty geometry, or none: left out
    AlignmentElementless, // lines in `alignments` without elements, drawn by another program: left out
    ElementsOutOfOrder,   // alignments whose elements are not numbered one by one: another program took or moved some
    NoNumber,             // features of `table` with another value than a number in the column `name`: taken as 0
    LotsDiffer, // features of the layer `lots` that another program took, moved or renamed, or their polylines
    OtherSystem, // features of `table` whose geometry names another reference system than the table: taken in the table's
    LinesDiffer,     // alignments whose line in the layer another program moved, or whose elements
    TakenIdentifier, // features of `table` with the identifier of another object: they get one of their own
    MissingColumn,   // `table` has no column `name`, renamed or removed: it is read as empty, and nothing can be saved
    MissingTable,    // the derived table `table` is not there: it is not written either
    // Of a package that another program made
    OtherDatum,       // coordinates of zone `count` of the datum `name`, taken as they stand
    NoPlainTable,     // `table` is a view or the like: left out
    NotListed,        // `table` has geometry, but no entry among the features: left out
    NoGeometryColumn, // `table` has no column of geometry that is stored: left out
    FeatureNoPlace,   // features of `table`: left out
    FeatureDamaged,   // of our own packages, too
    FeatureGeometry,  // a `name`
    FeatureWithHoles,
    NumberOfFeature, // features of `table` without a number that a row holds in the column `name`: they get their own
    NamesFrom,       // names of `table` come from the column `name`, numbers from `numbers`; empty where there is none
};
inline constexpr StoreNoteCode kLastStoreNoteCode = StoreNoteCode::NamesFrom;

struct StoreNote {
    StoreNoteCode code = StoreNoteCode::NoPlace;
    std::string table;
    std::string name;
    std::uint64_t count = 0;  // of features
    std::int64_t firstId = 0; // fid of the first of them
    std::string numbers = {};

    friend bool operator==(const StoreNote&, const StoreNote&) = default;
};

// Counts a feature that is left out or read otherwise than it stands, by reason.
void count(std::vector<StoreNote>& notes, StoreNoteCode code, std::string_view table, std::string_view name,
           std::int64_t fid);

// The code as programs read it: "missing-column".
[[nodiscard]] std::string_view noteName(StoreNoteCode code);
// One line.
[[nodiscard]] std::string noteText(const StoreNote& note, Language language = Language::English);

} // namespace fenmark::drawing
