// A drawing as LandXML 1.2 and as J-LandXML 1.7.
#include "exchange/landxml.h"

#include "exchange/element_shape.h"
#include "exchange/kinds.h"
#include "exchange/main_points.h"
#include "exchange/named_stations.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/results.h"
#include "exchange/round_stations.h"
#include "exchange/survey_text.h"
#include "exchange/text.h"
#include "platform/clock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using host::PlanPoint;

namespace {

constexpr int kCoordinateDecimals = 8; // of J-LandXML
constexpr double kInterval = 20.0;     // metres between two intermediate points

// A coordinate: the shortest decimal that reads back, or as many decimals as the profile wants.
struct Coordinate {
    LandXmlProfile profile;
    double value;
};

std::ostream& operator<<(std::ostream& out, Coordinate coordinate) {
    if (coordinate.profile == LandXmlProfile::JLandXml) {
        return out << fixedReal(coordinate.value, kCoordinateDecimals);
    }
    return out << PlainReal{coordinate.value};
}

// Writes alignments and intermediate points of one profile.
class AlignmentWriter {
  public:
    AlignmentWriter(std::ostream& out, const Drawing& drawing, LandXmlProfile profile, const Results& results)
        : out_(out), drawing_(drawing), profile_(profile), results_(results) {}

    void writeAlignments(Unplaced& unplaced);
    // Behind the alignments, whose names they refer to.
    void writeIntermediatePoints();
    [[nodiscard]] std::size_t renamed() const { return names_.renamed(); }
    [[nodiscard]] std::size_t withoutElements() const { return withoutElements_; }
    [[nodiscard]] std::size_t curvesWithoutIp() const { return withoutIp_; }
    [[nodiscard]] std::size_t turningFar() const { return turningFar_; }
    [[nodiscard]] std::size_t withoutPoints() const { return withoutPoints_; }
    [[nodiscard]] std::size_t equations() const { return equations_; }

  private:
    struct Written {
        std::size_t index;
        std::string name;
        curve::StationEquations stations;
    };

    bool isJapanese() const { return profile_ == LandXmlProfile::JLandXml; }
    void writePoint(const char* element, const PlanPoint& point);
    void writeRadius(double radius);
    PlanPoint piOf(const Element& element);
    void writeEquations(const curve::StationEquations& stations);
    void writeElement(const Element& element, double station);
    void writeIps(const drawing::Alignment& alignment);
    void writeProfile(const AlignmentResults& results);
    void writeCrossSections(const AlignmentResults& results);
    void writeIntermediatePointsOf(const Written& alignment, std::size_t number);
    void writeProperty(const char* label, const std::string& value);

    std::ostream& out_;
    const Drawing& drawing_;
    LandXmlProfile profile_;
    const Results& results_;
    std::vector<Written> written_;
    UniqueNames names_;
    std::size_t withoutElements_ = 0;
    std::size_t withoutIp_ = 0;
    std::size_t turningFar_ = 0;
    std::size_t equations_ = 0;
    std::size_t withoutPoints_ = 0;
    double intermediateLeft_ = kMostIntermediateOfFile;
};

// North, then east.
void AlignmentWriter::writePoint(const char* element, const PlanPoint& point) {
    out_ << '<' << element << '>' << Coordinate{profile_, point.y} << ' ' << Coordinate{profile_, point.x} << "</"
         << element << '>';
}

void AlignmentWriter::writeRadius(double radius) {
    if (std::isfinite(radius)) {
        out_ << PlainReal{radius};
    } else {
        out_ << "INF";
    }
}

// The format wants a PI for every spiral, and readers take its first tangent from it. One that turns by half a circle has
// none; a point ahead of its start stands there instead.
PlanPoint AlignmentWriter::piOf(const Element& element) {
    if (const auto pi = element.pi()) {
        const double ahead = (pi->x - element.start.x) * std::cos(element.direction) +
                             (pi->y - element.start.y) * std::sin(element.direction);
        if (ahead > 0.0) {
            return *pi;
        }
    }
    ++turningFar_;
    return {element.start.x + element.length * std::cos(element.direction),
            element.start.y + element.length * std::sin(element.direction)};
}

void AlignmentWriter::writeProperty(const char* label, const std::string& value) {
    out_ << "<Property label=\"" << label << "\" value=\"" << xmlText(value) << "\"/>";
}

// Stations that the pegs show, beside the internal one, which counts through from the start.
void AlignmentWriter::writeEquations(const curve::StationEquations& stations) {
    std::size_t zone = 0;
    for (const curve::StationEquation& equation : stations.equations()) {
        out_ << "      <StaEquation staBack=\"" << PlainReal{withoutNoise(stations.stationBack(zone))}
             << "\" staInternal=\"" << PlainReal{withoutNoise(stations.startStation() + equation.distance)}
             << "\" staAhead=\"" << PlainReal{equation.ahead} << "\"/>\n";
        ++zone;
        ++equations_;
    }
}

void AlignmentWriter::writeElement(const Element& element, double station) {
    const char* rotation = element.clockwise ? "cw" : "ccw";
    const char* closing = "Line";
    const ElementType shape = shapeOf(element);
    switch (shape) {
    case ElementType::Straight:
        out_ << "        <Line";
        break;
    case ElementType::Arc:
        closing = "Curve";
        out_ << "        <Curve rot=\"" << rotation << "\" " << (isJapanese() ? "" : "crvType=\"arc\" ") << "radius=\""
             << PlainReal{element.startRadius} << '"';
        break;
    case ElementType::Clothoid:
        closing = "Spiral";
        out_ << "        <Spiral rot=\"" << rotation << "\" spiType=\"clothoid\" radiusStart=\"";
        writeRadius(element.startRadius);
        out_ << "\" radiusEnd=\"";
        writeRadius(element.endRadius);
        out_ << '"';
        if (!isJapanese()) {
            out_ << " constant=\"" << PlainReal{parameterOf(element)} << '"';
        }
        break;
    }
    out_ << " length=\"" << PlainReal{element.length} << '"';
    if (!isJapanese()) {
        out_ << " staStart=\"" << PlainReal{station} << '"';
    }
    out_ << '>';
    writePoint("Start", element.start);
    if (shape == ElementType::Arc) {
        writePoint("Center", element.centre());
    }
    if (shape == ElementType::Clothoid) {
        writePoint("PI", piOf(element));
    }
    writePoint("End", element.end);
    if (isJapanese() && shape == ElementType::Clothoid) {
        out_ << "<Feature>";
        writeProperty("A", fixedReal(parameterOf(element), kCoordinateDecimals));
        out_ << "</Feature>";
    }
    out_ << "</" << closing << ">\n";
}

void AlignmentWriter::writeIps(const drawing::Alignment& alignment) {
    out_ << "      <AlignPIs>\n";
    for (const Ip& ip : ipsOf(alignment, MainPointNames::Ka, withoutIp_)) {
        out_ << "        <AlignPI><PI name=\"" << ip.name << '"';
        if (!ip.from.empty()) {
            out_ << " desc=\"" << ip.from << "～" << ip.to << '"';
        }
        out_ << '>' << Coordinate{profile_, ip.point.y} << ' ' << Coordinate{profile_, ip.point.x}
             << "</PI></AlignPI>\n";
    }
    out_ << "      </AlignPIs>\n";
}

void AlignmentWriter::writeProfile(const AlignmentResults& results) {
    if (results.longitudinal.empty()) {
        return;
    }
    out_ << "      <Profile>\n        <ProfSurf name=\"ExistingGround\"><PntList2D>";
    const char* separator = "";
    for (const LongitudinalPoint& point : results.longitudinal) {
        out_ << separator << PlainReal{point.station} << ' ' << PlainReal{point.height};
        separator = " ";
    }
    out_ << "</PntList2D></ProfSurf>\n      </Profile>\n";
}

void AlignmentWriter::writeCrossSections(const AlignmentResults& results) {
    if (results.sections.empty()) {
        return;
    }
    out_ << "      <CrossSects>\n";
    for (const CrossSection& section : results.sections) {
        out_ << "        <CrossSect name=\"" << xmlText(section.name) << "\" sta=\"" << PlainReal{section.station}
             << "\"><CrossSectSurf name=\"ExistingGround\"><PntList2D>";
        const char* separator = "";
        for (const SectionPoint& point : section.points) {
            out_ << separator << PlainReal{point.offset} << ' ' << PlainReal{point.height};
            separator = " ";
        }
        out_ << "</PntList2D></CrossSectSurf></CrossSect>\n";
    }
    if (isJapanese()) {
        out_ << "        <Feature>";
        writeProperty("projectPhase", "詳細");
        out_ << "</Feature>\n";
    }
    out_ << "      </CrossSects>\n";
}

void AlignmentWriter::writeAlignments(Unplaced& unplaced) {
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        const drawing::Alignment& alignment = drawing_.alignment(i);
        if (alignment.elements.empty()) {
            ++withoutElements_;
            continue;
        }
        if (!unplaced.look(alignment)) {
            continue;
        }
        if (written_.empty()) {
            out_ << "  <Alignments" << (isJapanese() ? " name=\"道路\"" : "") << ">\n";
        }
        curve::StationEquations stations;
        // Refused for a start that is not finite; the stations then count from 0.
        static_cast<void>(
            stations.set(alignment.startStation, stationEquationsOf(results_.alignments[i], alignment.startStation)));
        written_.push_back({i, names_.take(trimmedName(alignment.name)), std::move(stations)});
        out_ << "    <Alignment name=\"" << xmlText(written_.back().name) << "\" desc=\""
             << xmlText(trimmedName(alignment.description)) << "\" length=\"" << PlainReal{alignment.length()}
             << "\" staStart=\"" << PlainReal{alignment.startStation} << "\">\n";
        writeEquations(written_.back().stations);
        out_ << "      <CoordGeom>\n";
        double station = alignment.startStation;
        for (const Element& element : alignment.elements) {
            writeElement(element, station);
            station += element.length;
        }
        out_ << "      </CoordGeom>\n";
        writeIps(alignment);
        writeProfile(results_.alignments[i]);
        writeCrossSections(results_.alignments[i]);
        if (isJapanese()) {
            out_ << "      <Feature name=\"Interval\">";
            writeProperty("main", fixedReal(kInterval, 0));
            out_ << "</Feature>\n";
        }
        out_ << "    </Alignment>\n";
    }
    if (!written_.empty()) {
        if (isJapanese()) {
            out_ << "    <Feature>";
            writeProperty("designGmType", "道路");
            out_ << "</Feature>\n";
        }
        out_ << "  </Alignments>\n";
    }
}

void AlignmentWriter::writeIntermediatePointsOf(const Written& alignment, std::size_t number) {
    const drawing::AlignmentGeometry& geometry = drawing_.geometry(alignment.index);
    if (geometry.empty()) {
        return;
    }
    if (geometry.length() > kInterval * std::min(kMostIntermediatePoints, intermediateLeft_)) {
        ++withoutPoints_;
        return;
    }
    struct Point {
        double station;
        drawing::Pose pose;
    };
    std::vector<Point> points;
    constexpr double kSlack = 1e-9; // of a stake number, for a start that is a stake but for rounding
    const double first = std::ceil(geometry.startStation() / kInterval - kSlack);
    const double last = std::floor((geometry.endStation() + drawing::kStationTolerance) / kInterval);
    for (double stake = first; stake <= last && canBeCounted(first, last); ++stake) {
        if (const auto pose = geometry.poseAt(stake * kInterval)) {
            points.push_back({stake * kInterval, *pose});
        }
    }
    if (points.empty()) {
        return;
    }
    intermediateLeft_ -= static_cast<double>(points.size());
    const std::string prefix = "IntermediatePnt" + std::to_string(number) + "-";
    const StationNames stationNames;
    const auto shownStation = [&](double station) {
        return alignment.stations.stationAt(station - geometry.startStation()).station;
    };
    out_ << "  <CgPoints name=\"IntermediatePnts\">\n";
    for (std::size_t i = 0; i < points.size(); ++i) {
        out_ << "    <CgPoint name=\"" << stationNames(shownStation(points[i].station)) << "\" featureRef=\"" << prefix
             << i + 1 << "\">" << Coordinate{profile_, points[i].pose.point.y} << ' '
             << Coordinate{profile_, points[i].pose.point.x} << "</CgPoint>\n";
    }
    out_ << "    <Feature name=\"IntermediatePnts\">";
    writeProperty("alignmentRefs", alignment.name);
    out_ << "</Feature>\n";
    for (std::size_t i = 0; i < points.size(); ++i) {
        out_ << "    <Feature name=\"" << prefix << i + 1 << "\"><Property label=\"sta\" value=\""
             << PlainReal{points[i].station} << "\"/>";
        writeProperty("tangentDirectionAngle", packedDegrees(azimuthDegrees(azimuthOf(points[i].pose.direction))));
        out_ << "</Feature>\n";
    }
    out_ << "  </CgPoints>\n";
}

void AlignmentWriter::writeIntermediatePoints() {
    for (std::size_t i = 0; i < written_.size(); ++i) {
        writeIntermediatePointsOf(written_[i], i + 1);
    }
}

std::string nameOf(const EntityView& entity) {
    if (entity.row && !trimmedName(entity.row->name).empty()) {
        return std::string(trimmedName(entity.row->name));
    }
    return std::to_string(entity.id.asUint64());
}

void writeAttributes(std::ostream& out, UniqueNames& names, const EntityView& entity) {
    out << " name=\"" << xmlText(names.take(nameOf(entity))) << '"';
    if (entity.row) {
        out << " desc=\"" << xmlText(entity.row->type) << '"';
    }
}

// North, then east.
void writePoint(std::ostream& out, const char* element, double x, double y) {
    out << '<' << element << '>' << PlainReal{y} << ' ' << PlainReal{x} << "</" << element << '>';
}

void writeRing(std::ostream& out, const EntityView& entity) {
    const auto& vertices = entity.vertices;
    const std::size_t sides = entity.closed ? vertices.size() : vertices.size() - 1;
    out << "      <CoordGeom>\n";
    for (std::size_t i = 0; i < sides; ++i) {
        const auto& end = vertices[(i + 1) % vertices.size()];
        out << "        <Line>";
        writePoint(out, "Start", vertices[i].x, vertices[i].y);
        writePoint(out, "End", end.x, end.y);
        out << "</Line>\n";
    }
    out << "      </CoordGeom>\n";
}

bool isParcel(const EntityView& entity) {
    return !entity.isPoint() && entity.closed && entity.vertices.size() >= 3;
}

bool isPlanFeature(const EntityView& entity) {
    return !entity.isPoint() && !isParcel(entity) && entity.vertices.size() >= 2;
}

// One group of the format: an opening tag before the first of the entities that are wanted, a closing one at the end.
// Returns how many were renamed.
template <typename Wanted, typename Write>
std::size_t writeGroup(std::ostream& out, const Drawing& drawing, const char* group, Wanted wanted, Write write) {
    bool open = false;
    UniqueNames names;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (!wanted(entity) || !hasPlace(entity)) {
            continue;
        }
        if (!open) {
            out << "  <" << group << ">\n";
        }
        open = true;
        write(entity, names);
    }
    if (open) {
        out << "  </" << group << ">\n";
    }
    return names.renamed();
}

// The datum and zone, or nothing where the zone is unknown.
void writeCoordinateSystem(std::ostream& out, int zone, LandXmlProfile profile) {
    if (profile == LandXmlProfile::JLandXml) {
        out << "  <CoordinateSystem name=\"CRS1\" horizontalDatum=\"JGD2011\" verticalDatum=\"T.P\"";
        if (zone != 0) {
            out << " horizontalCoordinateSystemName=\"" << zone << "(X,Y)\"";
        }
        out << "/>\n";
    } else if (zone != 0) {
        out << "  <CoordinateSystem name=\"JGD2011 / Japan Plane Rectangular CS zone " << zone << "\" epsgCode=\""
            << 6668 + zone << "\" horizontalDatum=\"JGD2011\"/>\n";
    }
}

void writeHead(std::ostream& out, const Drawing& drawing, LandXmlProfile profile, int zone) {
    const std::string now = platform::utcNow();
    const std::size_t between = now.find('T');
    const std::string date = now.substr(0, between);
    const std::string time = now.substr(between + 1, now.size() - between - 2); // without the Z
    const bool japanese = profile == LandXmlProfile::JLandXml;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\" version=\"1.2\" date=\""
        << date << "\" time=\"" << time << '"' << (japanese ? "" : " language=\"Japanese\"") << ">\n";
    if (japanese) {
        out << "  <Project name=\"" << xmlText(drawing.sites().empty() ? "" : trimmedName(drawing.sites()[0].name))
            << "\"><Feature><Property label=\"projectPhase\" value=\"詳細\"/>"
               "<Property label=\"applicationCriterion\" value=\"MlitLandXmlVer.1.7\"/></Feature></Project>\n"
               "  <Application name=\"fenmark\"/>\n";
    }
    if (japanese) {
        writeCoordinateSystem(out, zone, profile);
    }
    out << "  <Units><Metric areaUnit=\"squareMeter\" linearUnit=\"meter\" volumeUnit=\"cubicMeter\" "
           "temperatureUnit=\"celsius\" pressureUnit=\"HPA\""
        << (japanese ? " angularUnit=\"decimal dd.mm.ss\" directionUnit=\"decimal dd.mm.ss\"" : "") << "/></Units>\n";
    if (!japanese) {
        writeCoordinateSystem(out, zone, profile);
        out << "  <Application name=\"fenmark\"/>\n";
    }
}

// A height that nobody gave stays out, and one that is no number, which is counted and reported.
std::size_t writeCgPoints(std::ostream& out, const Drawing& drawing) {
    return writeGroup(
        out, drawing, "CgPoints", [](const EntityView& entity) { return entity.isPoint(); },
        [&out](const EntityView& entity, UniqueNames& names) {
            const host::MdGePoint3d& at = entity.position();
            out << "    <CgPoint";
            writeAttributes(out, names, entity);
            out << '>' << PlainReal{at.y} << ' ' << PlainReal{at.x};
            if (const std::optional<double> height = knownHeight(entity)) {
                out << ' ' << PlainReal{*height};
            }
            out << "</CgPoint>\n";
        });
}

std::size_t writeParcels(std::ostream& out, const Drawing& drawing) {
    return writeGroup(out, drawing, "Parcels", isParcel, [&out](const EntityView& entity, UniqueNames& names) {
        const PlanPoint centre = labelPoint(entity.vertices);
        out << "    <Parcel";
        writeAttributes(out, names, entity);
        out << " area=\"" << PlainReal{std::abs(signedArea(entity.vertices))} << "\">\n      ";
        writePoint(out, "Center", centre.x, centre.y);
        out << '\n';
        writeRing(out, entity);
        out << "    </Parcel>\n";
    });
}

std::size_t writePlanFeatures(std::ostream& out, const Drawing& drawing) {
    return writeGroup(out, drawing, "PlanFeatures", isPlanFeature,
                      [&out](const EntityView& entity, UniqueNames& names) {
                          out << "    <PlanFeature";
                          writeAttributes(out, names, entity);
                          out << ">\n";
                          writeRing(out, entity);
                          out << "    </PlanFeature>\n";
                      });
}

// What the Japanese profile has no place for.
Notes leftOutOfProfile(const Drawing& drawing, int zone) {
    std::size_t points = 0;
    std::size_t lines = 0;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (!drawing.isPoint(i)) {
            ++lines;
            continue;
        }
        const EntityView entity = drawing.entity(i);
        points += isResult(kindOf(entity)) ? 0 : 1;
    }
    Notes notes;
    if (points + lines > 0) {
        notes.push_back({NoteCode::AlignmentsAlone, points, lines});
    }
    if (zone == 0) {
        notes.push_back({NoteCode::NoZone});
    }
    return notes;
}

} // namespace

Notes writeLandXml(const Drawing& drawing, std::ostream& out) {
    return writeLandXmlProfile(drawing, LandXmlProfile::LandXml, out);
}

Notes writeLandXmlProfile(const Drawing& drawing, LandXmlProfile profile, std::ostream& out, int zone) {
    const bool japanese = profile == LandXmlProfile::JLandXml;
    const int toldZone = zone != 0 ? zone : drawing.zone();
    writeHead(out, drawing, profile, toldZone);
    Unplaced unplaced;
    const Results results = resultsOf(drawing);
    AlignmentWriter alignments(out, drawing, profile, results);
    alignments.writeAlignments(unplaced);
    Notes notes;
    std::size_t withoutLine = 0;
    std::size_t renamed = alignments.renamed();
    if (japanese) {
        alignments.writeIntermediatePoints();
        notes = leftOutOfProfile(drawing, toldZone);
    } else {
        for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
            const EntityView entity = drawing.entity(i);
            withoutLine += unplaced.look(entity) && !entity.isPoint() && entity.vertices.size() < 2 ? 1 : 0;
        }
        renamed += writeCgPoints(out, drawing);
        renamed += writeParcels(out, drawing);
        renamed += writePlanFeatures(out, drawing);
    }
    out << "</LandXML>\n";
    const Notes leftOut = unplaced.notes(Fate::LeftOut);
    notes.insert(notes.end(), leftOut.begin(), leftOut.end());
    if (withoutLine > 0 || alignments.withoutElements() > 0) {
        notes.push_back({NoteCode::WithoutLine, 0, withoutLine, alignments.withoutElements()});
    }
    if (renamed > 0) {
        notes.push_back({NoteCode::RenamedObjects, renamed});
    }
    if (results.unplaced > 0) {
        notes.push_back(
            {NoteCode::UnplacedResults, results.unplaced, 0, 0, japanese ? Fate::LeftOut : Fate::PointsOnly});
    }
    if (alignments.equations() > 0) {
        notes.push_back({NoteCode::StationEquations, alignments.equations()});
    }
    if (alignments.curvesWithoutIp() > 0) {
        notes.push_back({NoteCode::CurveWithoutIp, alignments.curvesWithoutIp()});
    }
    if (alignments.turningFar() > 0) {
        notes.push_back({NoteCode::ClothoidWithoutPi, alignments.turningFar()});
    }
    if (alignments.withoutPoints() > 0) {
        notes.push_back({NoteCode::IntermediateCut, alignments.withoutPoints()});
    }
    return notes;
}

} // namespace fenmark::exchange
