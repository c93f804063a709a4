// The drawing output: finished sections become drawing objects through the host boundary.
#pragma once

#include "host/boundary/host_boundary.h"
#include "sima/reader/section_sink.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::output {

struct OutputSettings {
    // Clothoids get their PI in plan. Otherwise one between points of unequal heights has none, since its end tangents
    // run at their own points' heights and never meet.
    bool planTangents = false;
    // Hears of each route that became an alignment; may be empty.
    std::function<void(host::MdDbObjectId, const sima::SimaAlignment&)> alignmentMade;
};

class DrawingOutput : public sima::SectionSink {
  public:
    // The boundary must outlive the output.
    explicit DrawingOutput(host::HostBoundary& host, OutputSettings settings = {})
        : host_(host), settings_(std::move(settings)) {}

    void createCoordinatePoints(sima::SimaReader& reader, std::span<const sima::SimaPoint> points) override;
    void createLotPolyline(sima::SimaReader& reader, const sima::LotData& lot) override;
    host::MdDbObjectId createRouteAlignment(sima::SimaReader& reader, const sima::SimaAlignment& route) override;
    void createRoutePolyline(sima::SimaReader& reader, const sima::SimaAlignment& route) override;
    void createLongitudinalPoints(sima::SimaReader& reader, const sima::HSeriesData& section) override;
    void createCrossSectionPoints(sima::SimaReader& reader, const sima::IntersectionData& section) override;

  private:
    // The name of the file being read, for the rows. Holds until the next call.
    std::string_view fileNameOf(const sima::SimaReader& reader);

    host::HostBoundary& host_;
    OutputSettings settings_;
    std::string path_; // the one that the name is of
    std::string fileName_;
    // Kept between calls, so that a file of many small lots or cross sections allocates once.
    std::vector<host::MdGePoint3d> vertices_; // of the next polyline; the drawing takes them over and leaves it empty
    sima::Array<double> distances_;
    sima::Array<double> heights_;
};

} // namespace fenmark::output
