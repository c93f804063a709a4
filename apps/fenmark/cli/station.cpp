// fenmark station and fenmark locate: from station and offset to a point, and back.
#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"

#include <cmath>
#include <ostream>
#include <string>

namespace fenmark::cli {

using drawing::Load;

namespace {

// Where elements had to be left out, every station behind them would be another one.
void requireWhole(const drawing::AlignmentGeometry& geometry, const std::string& name, const Streams& streams) {
    if (!geometry.isWhole()) {
        throw Stop(kNotDone, said(streams.language, Text::EndlessElements, {{"name", name}}));
    }
}

// Whether the point is far from the alignment, and near it, at a foot of a perpendicular, with X and Y exchanged.
bool looksExchanged(const drawing::AlignmentGeometry& geometry, const LocateArguments& arguments,
                    const drawing::StationOffset& located) {
    constexpr double kNear = 100.0; // metres
    constexpr double kTimes = 10.0; // nearer by at least so much
    const auto exchanged = geometry.locate({arguments.y, arguments.x});
    const double distance = std::abs(located.offset);
    return exchanged && exchanged->perpendicular && std::abs(exchanged->offset) <= kNear &&
           (distance > kTimes * std::abs(exchanged->offset) && distance > kNear);
}

} // namespace

int runStation(const StationArguments& arguments, const Streams& streams) {
    const auto drawing = readDrawing(arguments.drawing, Load::WithoutEntities, streams);
    const std::size_t index = alignmentNamed(*drawing, arguments.drawing, arguments.alignment, streams.language);
    const auto& geometry = drawing->geometry(index);
    requireWhole(geometry, arguments.alignment, streams);
    const auto point = geometry.pointAt(arguments.station, arguments.offset);
    if (!point) {
        const Text why = geometry.empty() ? Text::StationOfNothing : Text::StationOutside;
        throw Stop(kNotDone, said(streams.language, why,
                                  {{"station", plainReal(arguments.station)},
                                   {"name", arguments.alignment},
                                   {"start", plainReal(geometry.startStation())},
                                   {"end", plainReal(geometry.endStation())}}));
    }
    if (arguments.json) {
        streams.out << "{\"x\":" << plainReal(point->x) << ",\"y\":" << plainReal(point->y) << "}\n";
    } else {
        streams.out << plainReal(point->x) << ' ' << plainReal(point->y) << '\n';
    }
    return kDone;
}

int runLocate(const LocateArguments& arguments, const Streams& streams) {
    const auto drawing = readDrawing(arguments.drawing, Load::WithoutEntities, streams);
    const std::size_t index = alignmentNamed(*drawing, arguments.drawing, arguments.alignment, streams.language);
    const auto& geometry = drawing->geometry(index);
    requireWhole(geometry, arguments.alignment, streams);
    const auto located = geometry.locate({arguments.x, arguments.y});
    if (!located) {
        throw Stop(kNotDone, said(streams.language, Text::NoElements, {{"name", arguments.alignment}}));
    }
    if (arguments.json) {
        streams.out << "{\"station\":" << plainReal(located->station) << ",\"offset\":" << plainReal(located->offset)
                    << ",\"perpendicular\":" << (located->perpendicular ? "true" : "false") << "}\n";
    } else {
        streams.out << plainReal(located->station) << ' ' << plainReal(located->offset) << '\n';
    }
    if (looksExchanged(geometry, arguments, *located)) {
        tellNote(streams, false,
                 inLanguage(
                     streams,
                     "この点はXとYを入れ替えると線形の近くにあります。ここでのXは東で、SIMAファイルのYに当たります",
                     "the point lies near the alignment with X and Y exchanged: X is east, which a SIMA file calls Y"));
    }
    if (!located->perpendicular && !arguments.json) {
        tellNote(streams, false,
                 inLanguage(streams, "最も近い点は線形の端または折れ点で、垂線の足ではありません",
                            "the nearest point is an end or a kink of the alignment, not the foot of a perpendicular"));
    }
    return kDone;
}

} // namespace fenmark::cli
