// The recording double of the civil automation: sites and alignments kept in memory, stations answered from the chain.
#pragma once

#include "host/boundary/corridor_utility.h"
#include "host/recording/call_log.h"
#include "host/recording/recorded_chain.h"
#include "host/recording/recording_drawing_writer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

struct RecordedAlignment {
    MdDbObjectId id;
    std::string name;
    std::string site;
    std::string layer;
    std::string description;
    double startStation = 0.0; // metres
    bool complete = false;     // false for one whose making broke off: it stays all the same
    RecordedChain chain;
};

struct RecordedStation {
    MdDbObjectId alignment;
    double station = 0.0; // metres
    double offset = 0.0;  // metres
};

// What all corridor utilities of one recorded drawing share, and what a test sets up.
struct RecordedCivil {
    std::vector<std::string> sites;
    std::vector<RecordedAlignment> alignments;
    std::vector<RecordedStation> stationsAsked;

    // Answers every station in place of the chains; the result is that of pointAtStationOffset.
    std::function<std::int32_t(const RecordedStation&, PlanPoint&)> pointFunction;
    // Added to the ends that new arcs and clothoids report, metres.
    PlanPoint reportedShift;
    // The add, counted from 0 in each alignment, that fails; -1 for none.
    std::int32_t failingAdd = -1;
    bool failSites = false;      // the sites cannot be had
    bool failAlignments = false; // collecting breaks off after the first alignment
};

class RecordingCorridorUtility : public CorridorUtility {
  public:
    RecordingCorridorUtility(CallLog& calls, IdSource& ids, RecordedCivil& civil, const std::string& currentLayer)
        : calls_(calls), ids_(ids), civil_(civil), currentLayer_(currentLayer) {}

    void connect() override;
    void disconnect() override;
    std::int32_t listSites(std::vector<std::string>& names) override;
    std::int32_t createSite(std::string_view name) override;
    std::int32_t findSite(std::string_view name) override;
    std::int32_t collectAlignments(std::map<std::string, MdDbObjectId>& alignments) override;
    MdDbObjectId createAlignment(std::string_view name, std::string_view siteName, std::string_view description,
                                 double startStation, sima::Array<sima::EntityData>& elements) override;
    std::string getAlignmentName(MdDbObjectId id) override;
    std::int32_t pointAtStation(MdDbObjectId id, double station, PlanPoint& point) override;
    std::int32_t pointAtStationOffset(MdDbObjectId id, double station, double offset, PlanPoint& point) override;

  private:
    // Raises AutomationError (pointer) outside connect and disconnect.
    void requireConnection() const;
    const RecordedAlignment* find(MdDbObjectId id) const;
    bool hasSite(std::string_view name) const;
    std::int32_t point(const RecordedStation& asked, PlanPoint& point);

    CallLog& calls_;
    IdSource& ids_;
    RecordedCivil& civil_;
    const std::string& currentLayer_;
    bool connected_ = false;
};

} // namespace fenmark::host
