// What is odd about a drawing that was opened, in English.
#include "drawing/geopackage/store_notes.h"

namespace fenmark::drawing {

namespace {

std::string counted(const StoreNote& note, const std::string& what) {
    return std::to_string(note.count) + " " + what + (note.count == 1 ? "" : "s") + " of the layer '" + note.table +
           "' (first fid " + std::to_string(note.firstId) + ")";
}

} // namespace

std::string noteText(const StoreNote& note) {
    switch (note.code) {
    case StoreNoteCode::OtherGeometry:
        return counted(note, "feature") + " left out: a " + note.name + " is no object of a drawing";
    case StoreNoteCode::NoPlace:
        return counted(note, "feature") + " left out: without a place";
    case StoreNoteCode::AlignmentElementless:
        return counted(note, "line") + " left out: without alignment elements";
    case StoreNoteCode::TakenIdentifier:
        return counted(note, "feature") + " had the identifier of another object; the next save gives a new one";
    case StoreNoteCode::MissingColumn:
        return "the table '" + note.table + "' has no column '" + note.name +
               "': it is taken as empty, and the drawing cannot be saved until the column is there again";
    case StoreNoteCode::MissingTable:
        return "the table '" + note.table + "' is missing: it is not written";
    }
    return {};
}

} // namespace fenmark::drawing
