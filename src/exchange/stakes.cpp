// Stakes along an alignment.
#include "exchange/stakes.h"

#include "exchange/csv_field.h"
#include "exchange/placed.h"
#include "exchange/round_stations.h"
#include "exchange/text.h"
#include "sima/text/cp932.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>
#include <sstream>
#include <utility>

namespace fenmark::exchange {

using drawing::AlignmentGeometry;
using drawing::Drawing;
using drawing::Pose;

namespace {

constexpr double kSamePlace = 0.0005;  // metres
constexpr std::size_t kNameBytes = 20; // of a SIMA point's name
constexpr std::size_t kColumns = 8;
constexpr std::array<const char*, kColumns> kTitles = {"点名", "追加距離", "離れ",       "X",
                                                       "Y",    "測点",     "接線方向角", "横断方向角"};

struct Place {
    double station;
    std::string name; // of a main point; empty otherwise
    Pose pose;
};

// With as many decimals as the offset needs, so that no two offsets give one name.
std::string stakeNameAt(const std::string& name, double offset) {
    if (offset == 0.0) {
        return name;
    }
    return name + (offset < 0.0 ? "左" : "右") + shortReal(std::abs(offset));
}

Obstacle outside(double station, const AlignmentGeometry& geometry) {
    Obstacle why;
    why.code = ObstacleCode::StationOutside;
    why.station = station;
    why.from = geometry.startStation();
    why.to = geometry.endStation();
    return why;
}

// The places to stake, main points first where stations are equal. Nothing where all went well.
std::optional<Obstacle> collectPlaces(const Drawing& drawing, std::size_t index, const StakeOptions& options,
                                      std::vector<Place>& places) {
    const AlignmentGeometry& geometry = drawing.geometry(index);
    if (geometry.empty() || !hasPlace(drawing.alignment(index))) {
        return Obstacle{ObstacleCode::NoElementsToStake};
    }
    std::vector<MainPoint> mainPoints;
    if (options.mainPoints) {
        mainPoints = mainPointsOf(drawing.alignment(index), options.mainPointNames);
    }
    const double asked = (options.every > 0.0 ? geometry.length() / options.every : 0.0) +
                         static_cast<double>(options.stations.size() + mainPoints.size());
    if (asked * static_cast<double>(options.offsets.size()) > static_cast<double>(kMostStakes)) {
        return Obstacle{ObstacleCode::TooManyStakes, kMostStakes};
    }
    for (MainPoint& point : mainPoints) {
        places.push_back({point.station, std::move(point.name), point.pose});
    }
    for (const double station : options.stations) {
        const auto pose = geometry.poseAt(station);
        if (!pose) {
            return outside(station, geometry);
        }
        places.push_back({station, "", *pose});
    }
    if (options.every > 0.0) {
        constexpr double kSlack = 1e-9; // of a count
        const double first = std::ceil(geometry.startStation() / options.every - kSlack);
        const double last = std::floor(geometry.endStation() / options.every + kSlack);
        for (double count = first; count <= last && canBeCounted(first, last); ++count) {
            if (const auto pose = geometry.poseAt(count * options.every)) {
                places.push_back({count * options.every, "", *pose});
            }
        }
    }
    return std::nullopt;
}

void putInOrder(std::vector<Place>& places) {
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& a, const Place& b) { return a.station < b.station; });
    std::vector<Place> kept;
    for (Place& place : places) {
        if (!kept.empty() && place.station - kept.back().station <= kSamePlace) {
            if (kept.back().name.empty()) {
                kept.back() = std::move(place);
                continue;
            }
            if (place.name.empty()) {
                continue;
            }
        }
        kept.push_back(std::move(place));
    }
    places = std::move(kept);
}

std::array<std::string, kColumns> columnsOf(const Stake& stake) {
    return {stake.name,
            metresText(stake.station),
            metresText(stake.offset),
            metresText(stake.point.y),
            metresText(stake.point.x),
            stake.stationName,
            degreesText(azimuthDegrees(stake.tangent)),
            degreesText(azimuthDegrees(stake.cross))};
}

// Columns that a text takes on a terminal: a CJK character takes two.
std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool prime = text.substr(i, 2) == "\xE2\x80"; // ′ and ″ are as narrow as letters
        if (byte < 0x80 || prime) {
            width += 1;
        } else if (byte >= 0xE2) {
            width += 2;
        } else if (byte >= 0xC0) {
            width += 1;
        }
    }
    return width;
}

void writeTable(const Stakes& stakes, std::ostream& out) {
    std::vector<std::array<std::string, kColumns>> rows;
    rows.reserve(stakes.stakes.size() + 1);
    rows.emplace_back();
    std::copy(kTitles.begin(), kTitles.end(), rows.front().begin());
    for (const Stake& stake : stakes.stakes) {
        rows.push_back(columnsOf(stake));
    }
    std::array<std::size_t, kColumns> widths{};
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    }
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < kColumns; ++i) {
            const std::string blanks(widths[i] - displayWidth(row[i]), ' ');
            const bool isName = i == 0 || i == 5;
            line += (i == 0 ? "" : "  ") + (isName ? row[i] + blanks : blanks + row[i]);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

void writeCsv(const Stakes& stakes, std::ostream& out) {
    out << "\xEF\xBB\xBF";
    const char* separator = "";
    for (const char* title : kTitles) {
        out << std::exchange(separator, ",") << title;
    }
    out << "\r\n";
    for (const Stake& stake : stakes.stakes) {
        separator = "";
        for (const std::string& column : columnsOf(stake)) {
            out << std::exchange(separator, ",") << CsvField{column};
        }
        out << "\r\n";
    }
}

// What separates fields, or stands in no file of the format, becomes a blank.
std::string simaField(std::string_view text) {
    std::string bytes;
    for (const char c : text) {
        bytes += c == ',' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    }
    std::string encoded;
    sima::encodeCp932(encoded, bytes);
    return encoded;
}

std::string padded(std::string text, std::size_t width, bool left) {
    if (text.size() < width) {
        text.insert(left ? text.size() : 0, width - text.size(), ' ');
    }
    return text;
}

void writeSima(const Stakes& stakes, std::ostream& out) {
    constexpr std::size_t kNumberWidth = 5;
    constexpr std::size_t kCoordinateWidth = 14;
    const std::string title = simaField(trimmedName(stakes.alignment)) + " " + simaField("杭打ち点");
    out << "G00,04," << title << ",\r\nZ00," << title << ",\r\nA00,\r\n";
    UniqueNames names;
    std::size_t number = 0;
    for (const Stake& stake : stakes.stakes) {
        out << "A01," << padded(std::to_string(++number), kNumberWidth, false) << ','
            << padded(simaField(names.take(stake.name)), kNameBytes, true) << ','
            << padded(metresText(stake.point.y), kCoordinateWidth, false) << ','
            << padded(metresText(stake.point.x), kCoordinateWidth, false) << ",,\r\n";
    }
    out << "A99,\r\n";
}

void writeJson(const Stakes& stakes, std::ostream& out) {
    constexpr double kDegree = std::numbers::pi / 180.0;
    out << "{\"alignment\":" << JsonText{trimmedName(stakes.alignment)} << ",\"stakes\":[";
    const char* separator = "";
    for (const Stake& stake : stakes.stakes) {
        out << std::exchange(separator, ",") << "\n{\"name\":" << JsonText{stake.name}
            << ",\"station_name\":" << JsonText{stake.stationName} << ",\"station\":" << JsonReal{stake.station}
            << ",\"offset\":" << JsonReal{stake.offset} << ",\"x\":" << JsonReal{stake.point.x}
            << ",\"y\":" << JsonReal{stake.point.y} << ",\"tangent\":" << JsonReal{stake.tangent / kDegree}
            << ",\"cross\":" << JsonReal{stake.cross / kDegree} << '}';
    }
    out << "]}\n";
}

} // namespace

Stakes stakesOf(const Drawing& drawing, std::size_t alignment, const StakeOptions& options) {
    Stakes result;
    result.alignment = drawing.alignment(alignment).name;
    std::vector<Place> places;
    result.failure = collectPlaces(drawing, alignment, options, places);
    if (result.failure) {
        return result;
    }
    putInOrder(places);
    if (places.empty()) {
        Note& note = result.note.emplace();
        note.code = options.every <= 0.0 ? NoteCode::NoStakeWanted : NoteCode::NoStakeInRange;
        note.metres = options.every;
        note.from = drawing.geometry(alignment).startStation();
        note.to = drawing.geometry(alignment).endStation();
    }
    std::vector<double> offsets; // each once
    std::set<double> known;
    for (const double offset : options.offsets) {
        if (known.insert(offset).second) {
            offsets.push_back(offset);
        }
    }
    result.stakes.reserve(places.size() * offsets.size());
    for (const Place& place : places) {
        const double sine = std::sin(place.pose.direction);
        const double cosine = std::cos(place.pose.direction);
        for (const double offset : offsets) {
            Stake stake;
            stake.stationName = options.stationNames(place.station);
            stake.name = stakeNameAt(place.name.empty() ? stake.stationName : place.name, offset);
            stake.station = place.station;
            stake.offset = offset;
            stake.point = {place.pose.point.x + offset * sine, place.pose.point.y - offset * cosine};
            stake.tangent = azimuthOf(place.pose.direction);
            stake.cross = azimuthOf(place.pose.direction - std::numbers::pi / 2.0);
            result.stakes.push_back(std::move(stake));
        }
    }
    return result;
}

void writeStakes(const Stakes& stakes, StakeFormat format, std::ostream& out) {
    switch (format) {
    case StakeFormat::Table:
        return writeTable(stakes, out);
    case StakeFormat::Csv:
        return writeCsv(stakes, out);
    case StakeFormat::Sima:
        return writeSima(stakes, out);
    case StakeFormat::Json:
        return writeJson(stakes, out);
    }
}

} // namespace fenmark::exchange
