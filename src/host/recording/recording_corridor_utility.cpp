// Sites, alignments and stations of a recorded drawing.
#include "host/recording/recording_corridor_utility.h"

#include "host/boundary/automation_error.h"
#include "output/alignment_passes.h"

#include <algorithm>
#include <memory>

namespace fenmark::host {

namespace {

class RecordedElementHandle : public AlignmentElement {
  public:
    RecordedElementHandle(const RecordedElement& element, const PlanPoint& shift) : element_(element), shift_(shift) {}
    std::int32_t elementId() override { return element_.id; }
    double endX() override { return element_.laidEnd.x + shift_.x; }
    double endY() override { return element_.laidEnd.y + shift_.y; }
    double arcValue1() override { return element_.radius; }
    double arcValue2() override { return element_.laidLength; }

  private:
    RecordedElement element_;
    PlanPoint shift_;
};

class RecordedElements : public AlignmentElements {
  public:
    RecordedElements(RecordedChain& chain, const RecordedCivil& civil) : chain_(chain), civil_(civil) {}

    std::int32_t addFixedLine(const MdGePoint3d& start, const MdGePoint3d& end,
                              std::unique_ptr<AlignmentElement>& element) override {
        return refuses() ? kRefused : give(chain_.addLine(start, end), element);
    }
    std::int32_t addFixedCurve(const MdGePoint3d& start, const MdGePoint3d& end, double radius, std::int16_t direction,
                               std::unique_ptr<AlignmentElement>& element) override {
        return refuses() ? kRefused : give(chain_.addArc(start, end, radius, direction), element);
    }
    std::int32_t addFixedSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                                double startRadius, double endRadius, double length, std::int16_t direction,
                                std::int32_t spiralKind, std::unique_ptr<AlignmentElement>& element) override {
        if (refuses()) {
            return kRefused;
        }
        return give(chain_.addSpiral(elementBefore, start, pi, startRadius, endRadius, length, direction, spiralKind),
                    element);
    }

  private:
    static constexpr std::int32_t kRefused = 1;

    bool refuses() { return civil_.failingAdd == adds_++; }
    std::int32_t give(std::int32_t status, std::unique_ptr<AlignmentElement>& element) {
        if (status == 0) {
            element = std::make_unique<RecordedElementHandle>(chain_.last(), civil_.reportedShift);
        }
        return status;
    }

    RecordedChain& chain_;
    const RecordedCivil& civil_;
    std::int32_t adds_ = 0;
};

} // namespace

void RecordingCorridorUtility::connect() {
    calls_.add(Call::Connect);
    connected_ = true;
}

void RecordingCorridorUtility::disconnect() {
    calls_.add(Call::Disconnect);
    requireConnection();
    connected_ = false;
}

std::int32_t RecordingCorridorUtility::listSites(std::vector<std::string>& names) {
    calls_.add(Call::ListSites);
    requireConnection();
    names.clear();
    if (civil_.failSites) {
        return -1;
    }
    names = civil_.sites;
    return 0;
}

std::int32_t RecordingCorridorUtility::createSite(std::string_view name) {
    calls_.add(Call::CreateSite);
    requireConnection();
    if (civil_.failSites) {
        return -1;
    }
    civil_.sites.emplace_back(name);
    return 0;
}

std::int32_t RecordingCorridorUtility::findSite(std::string_view name) {
    calls_.add(Call::FindSite);
    requireConnection();
    return hasSite(name) ? 0 : -1;
}

std::int32_t RecordingCorridorUtility::collectAlignments(std::map<std::string, MdDbObjectId>& alignments) {
    calls_.add(Call::CollectAlignments);
    requireConnection();
    if (civil_.failSites) {
        return -1;
    }
    for (const std::string& site : civil_.sites) {
        for (const RecordedAlignment& alignment : civil_.alignments) {
            if (alignment.site != site) {
                continue;
            }
            alignments[alignment.name] = alignment.id;
            if (civil_.failAlignments) {
                return -1;
            }
        }
    }
    return 0;
}

MdDbObjectId RecordingCorridorUtility::createAlignment(std::string_view name, std::string_view siteName,
                                                       std::string_view description, double startStation,
                                                       sima::Array<sima::EntityData>& elements) {
    calls_.add(Call::CreateAlignment);
    requireConnection();
    if (!hasSite(siteName)) {
        return {};
    }
    RecordedAlignment& alignment = civil_.alignments.emplace_back();
    alignment.id = ids_.next();
    alignment.name = name;
    alignment.site = siteName;
    alignment.layer = currentLayer_;
    alignment.description = description;
    output::resolveSpiralPis(elements);
    RecordedElements collection(alignment.chain, civil_);
    if (output::addAlignmentElements(collection, elements) != 0) {
        return {};
    }
    // A leading clothoid never gets here, so there is no auxiliary line to remove.
    if (!elements.empty() && elements[0].type == "A") {
        alignment.chain.removeAt(0);
    }
    alignment.startStation = startStation;
    alignment.complete = true;
    return alignment.id;
}

std::string RecordingCorridorUtility::getAlignmentName(MdDbObjectId id) {
    calls_.add(Call::GetAlignmentName);
    requireConnection();
    const RecordedAlignment* const alignment = find(id);
    return alignment != nullptr ? alignment->name : std::string();
}

std::int32_t RecordingCorridorUtility::pointAtStation(MdDbObjectId id, double station, PlanPoint& point) {
    calls_.add(Call::PointAtStation);
    return this->point({id, station, 0.0}, point);
}

std::int32_t RecordingCorridorUtility::pointAtStationOffset(MdDbObjectId id, double station, double offset,
                                                            PlanPoint& point) {
    calls_.add(Call::PointAtStationOffset);
    return this->point({id, station, offset}, point);
}

void RecordingCorridorUtility::requireConnection() const {
    if (!connected_) {
        throw AutomationError(kStatusPointerError, "the civil automation is not connected");
    }
}

const RecordedAlignment* RecordingCorridorUtility::find(MdDbObjectId id) const {
    const auto found = std::find_if(civil_.alignments.begin(), civil_.alignments.end(),
                                    [&](const RecordedAlignment& alignment) { return alignment.id == id; });
    return found == civil_.alignments.end() ? nullptr : &*found;
}

bool RecordingCorridorUtility::hasSite(std::string_view name) const {
    return !civil_.failSites && std::find(civil_.sites.begin(), civil_.sites.end(), name) != civil_.sites.end();
}

std::int32_t RecordingCorridorUtility::point(const RecordedStation& asked, PlanPoint& point) {
    requireConnection();
    civil_.stationsAsked.push_back(asked);
    if (civil_.pointFunction) {
        return civil_.pointFunction(asked, point);
    }
    const RecordedAlignment* const alignment = find(asked.alignment);
    if (alignment == nullptr ||
        !alignment->chain.pointAt(asked.station - alignment->startStation, asked.offset, point)) {
        return -1;
    }
    return 0;
}

} // namespace fenmark::host
