// What a program should tell about a drawing that was opened: codes with values, to be worded by the program.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::drawing {

enum class StoreNoteCode {
    OtherGeometry,        // features of `table` whose geometry is a `name`, not of the layer's kind: left out
    NoPlace,              // features of `table` with an empty geometry, or none: left out
    AlignmentElementless, // lines in `alignments` without elements, drawn by another program: left out
    TakenIdentifier,      // features of `table` with the identifier of another object: they get one of their own
    MissingColumn, // `table` has no column `name`, renamed or removed: it is read as empty, and nothing can be saved
    MissingTable,  // the derived table `table` is not there: it is not written either
};

struct StoreNote {
    StoreNoteCode code = StoreNoteCode::NoPlace;
    std::string table;
    std::string name;
    std::uint64_t count = 0;  // of features
    std::int64_t firstId = 0; // fid of the first of them

    friend bool operator==(const StoreNote&, const StoreNote&) = default;
};

// One line in English.
std::string noteText(const StoreNote& note);

} // namespace fenmark::drawing
