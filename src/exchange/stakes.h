// Stakes along an alignment: points at stations and offsets with names and directions, for setting out.
#pragma once

#include "drawing/drawing.h"
#include "exchange/main_points.h"
#include "exchange/notes.h"
#include "exchange/obstacles.h"
#include "exchange/survey_text.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::exchange {

inline constexpr std::size_t kMostStakes = 1000000;
inline constexpr double kMostOffset = 100000.0; // metres; a plane rectangular zone reaches no farther

struct StakeOptions {
    double every = kStakePitch;     // metres between stakes, counted from station 0; 0 for none
    std::vector<double> stations;   // beside these
    std::vector<double> offsets{0}; // metres, positive to the right of travel; one that comes twice counts once
    bool mainPoints = false;        // with BP, EP and all joints
    MainPointNames mainPointNames = MainPointNames::Ka;
    StationNames stationNames;
};

struct Stake {
    std::string name;        // "No.17+5.000", "KA1-1", "No.3左5": with the side and the offset behind it
    std::string stationName; // "No.17+5.000" also for a main point
    double station = 0.0;
    double offset = 0.0;
    drawing::PlanPoint point;
    double tangent = 0.0; // azimuth of travel, radians clockwise from north
    double cross = 0.0;   // azimuth to the right, square to it
};

struct Stakes {
    std::string alignment;
    std::vector<Stake> stakes;       // by station, then by offset as asked for
    std::optional<Obstacle> failure; // why there can be none
    std::optional<Note> note;        // on why there are none though nothing is wrong
};

// A main point takes the place of a station within half a millimetre of it.
[[nodiscard]] Stakes stakesOf(const drawing::Drawing& drawing, std::size_t alignment, const StakeOptions& options);

enum class StakeFormat { Table, Csv, Sima, Json };

// A table for reading, comma-separated text, points of a SIMA file (code page 932), or JSON. In the first three X is
// north and Y east, as survey documents have them; in JSON x is east and y north, as everywhere in this program's JSON.
void writeStakes(const Stakes& stakes, StakeFormat format, std::ostream& out);

} // namespace fenmark::exchange
