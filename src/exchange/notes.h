// What a user should know of a file that was written, or of a drawing that was drawn: codes with their figures. The
// programs word them in the user's language.
#pragma once

#include "values/language.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {

enum class NoteCode : std::uint8_t {
    // Any format
    NothingSelected,   // a file without objects, as none is what was asked for
    NoPlace,           // count points, polylines and alignments with coordinates beyond all bounds; became
    NoHeight,          // count points whose height is beyond all bounds
    WithoutLine,       // polylines of fewer than two points and alignments without elements, left out; plans too
    RenamedObjects,    // count objects whose name another one of the file has
    BeyondProjection,  // count objects too far from the zone's origin for a longitude; became
    UnplacedResults,   // count longitudinal and cross-section results that lie on no alignment; became
    PointsAlone,       // polylines and alignments that a CSV file does not hold
    AlignmentsAlone,   // count points and polylines that a J-LandXML file does not hold
    NoZone,            // a J-LandXML file that does not say its plane rectangular zone
    StationEquations,  // count equations that the names of longitudinal results prove
    CurveWithoutIp,    // count curves that turn by half a circle or more
    ClothoidWithoutPi, // count clothoids that do
    IntermediateCut,   // count alignments without intermediate points, which would be too many
    // SIMA
    LeadingClothoid,
    JoinedStraights,
    AddedPoints,
    RenumberedPoints,
    WithoutRow,
    ResultsAsPoints,
    AddedCentres,
    ReplacedCharacters,
    ControlCharacters,
    RenumberedResults,
    // DXF
    BeyondRelease, // count characters
    // Reports
    LotWithoutArea,
    LotWithoutRing,
    NothingReported, // a file without a table, as the drawing has nothing for those that are asked for
    // Plans and sections
    AtOrigin,              // count objects at the origin, far from all others
    OutOfReach,            // count objects with coordinates that no survey has
    SmallLines,            // count lines that others cover on the paper
    DotsForMany,           // of count points
    NamesOfMany,           // of count points, left out
    NoRoomForNames,        // of count points
    NoRoomForLotNames,     // of count lots
    NoRoomAlongAlignments, // for count texts
    NoRoomForFigures,
    StationsEvery,      // metres
    StationsCut,        // after count of them
    LettersWithoutFont, // count letters that no font has, the first of them letters
    // Stakes
    NoStakeWanted,
    NoStakeInRange, // no multiple of metres lies between the stations from and to
};
inline constexpr NoteCode kLastNoteCode = NoteCode::NoStakeInRange;
inline constexpr std::size_t kNoteCodes = static_cast<std::size_t>(kLastNoteCode) + 1;

// What became of objects that a format could not take as they are.
enum class Fate : std::uint8_t { LeftOut, WithoutGeometry, LeftEmpty, PointsOnly, KeptUnseen };
inline constexpr Fate kLastFate = Fate::KeptUnseen;

struct Note {
    NoteCode code = NoteCode::NoPlace;
    std::size_t count = 0; // of what the code names
    std::size_t polylines = 0;
    std::size_t alignments = 0;
    Fate became = Fate::LeftOut;
    double metres = 0.0;
    double from = 0.0; // stations, metres
    double to = 0.0;
    std::string letters = {}; // UTF-8

    friend bool operator==(const Note&, const Note&) = default;
};

using Notes = std::vector<Note>;

// The code as programs read it: "no-place".
[[nodiscard]] std::string_view noteName(NoteCode code);
// One line, without a full stop.
[[nodiscard]] std::string wording(const Note& note, Language language);

} // namespace fenmark::exchange
