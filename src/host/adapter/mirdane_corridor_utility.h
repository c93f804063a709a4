// The civil automation over the host's automation objects.
#pragma once

#include "host/adapter/automation_ref.h"
#include "host/boundary/corridor_utility.h"
#include "host/boundary/drawing_writer.h"

namespace fenmark::host {

class MirdaneCorridorUtility : public CorridorUtility {
  public:
    // The writer gives the current layer, which new alignments take. It must outlive the utility.
    explicit MirdaneCorridorUtility(DrawingWriter& drawing) : drawing_(drawing) {}

    // Raises AutomationError (pointer) if an automation object is missing where the next step needs it.
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
    // 0 and the site, held by the caller; -1 if there is none of exactly that name.
    std::int32_t findSite(std::string_view name, AutomationRef<mirdane::CivilSite>& site);

    DrawingWriter& drawing_;
    // Destruction releases in the reverse of this order.
    AutomationRef<mirdane::CivilDatabase> civilDatabase_;
    AutomationRef<mirdane::HostApplication> hostApplication_;
    AutomationRef<mirdane::LandApplication> landApplication_;
    AutomationRef<mirdane::LandDocument> landDocument_;
    AutomationRef<mirdane::RoadwayApplication> roadwayApplication_;
    AutomationRef<mirdane::RoadwayDocument> roadwayDocument_; // held only
    AutomationRef<mirdane::AutomationObject> databaseOwner_;  // held only
};

} // namespace fenmark::host
