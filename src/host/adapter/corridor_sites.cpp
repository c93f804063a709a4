// Sites, the alignments in them, and stations on an alignment.
#include "host/adapter/automation_values.h"
#include "host/adapter/mirdane_corridor_utility.h"
#include "host/adapter/raise_on_failure.h"

namespace fenmark::host {

namespace {

using mirdane::AutomationObject;
using mirdane::CivilAlignment;
using mirdane::CivilDatabase;
using mirdane::CivilSite;
using mirdane::SiteCollection;
using mirdane::Variant;

constexpr const char* kNoSiteText = "エラーが発生しました（サイトが取得できません）";
constexpr const char* kNoSiteCaption = "SIMAインポート";

// The alignment under an identifier. Raises a MirdanException if there is none.
AutomationRef<CivilAlignment> alignmentOf(const AutomationRef<CivilDatabase>& database, MdDbObjectId id) {
    AutomationRef<AutomationObject> object;
    raiseOnFailure(database->objectFromId(id.asUint64(), object.receive()));
    AutomationRef<CivilAlignment> alignment;
    raiseOnFailure(queryInterface(object, alignment));
    return alignment;
}

void collectSite(const AutomationRef<CivilSite>& site, std::map<std::string, MdDbObjectId>& collected) {
    AutomationRef<mirdane::AlignmentCollection> alignments;
    raiseOnFailure(site->getAlignments(alignments.receive()));
    std::int32_t count = 0;
    raiseOnFailure(alignments->count(count));
    for (std::int32_t i = 0; i < count; ++i) {
        AutomationRef<CivilAlignment> alignment;
        raiseOnFailure(alignments->item(Variant::int32(i), alignment.receive()));
        std::string name;
        raiseOnFailure(alignment->getName(name));
        std::uint64_t id = 0;
        raiseOnFailure(alignment->getObjectId(id));
        collected[name] = MdDbObjectId(id);
    }
}

} // namespace

std::int32_t MirdaneCorridorUtility::listSites(std::vector<std::string>& names) {
    names.clear();
    AutomationRef<SiteCollection> sites;
    if (civilDatabase_->getSites(sites.receive()) != 0) {
        return -1;
    }
    std::int32_t count = 0;
    sites->count(count);
    for (std::int32_t i = 0; i < count; ++i) {
        AutomationRef<CivilSite> site;
        sites->item(Variant::int32(i), site.receive());
        if (!site) {
            mirdane::showMessageBox(kNoSiteText, kNoSiteCaption);
            return -1;
        }
        std::string name;
        site->getName(name);
        names.push_back(std::move(name));
    }
    return 0;
}

std::int32_t MirdaneCorridorUtility::createSite(std::string_view name) {
    AutomationRef<SiteCollection> sites;
    if (civilDatabase_->getSites(sites.receive()) != 0) {
        return -1;
    }
    AutomationRef<CivilSite> site;
    return sites->add(automationString(name), site.receive());
}

std::int32_t MirdaneCorridorUtility::findSite(std::string_view name) {
    AutomationRef<CivilSite> site;
    return findSite(name, site);
}

std::int32_t MirdaneCorridorUtility::findSite(std::string_view name, AutomationRef<CivilSite>& site) {
    AutomationRef<SiteCollection> sites;
    if (civilDatabase_->getSites(sites.receive()) != 0) {
        return -1;
    }
    std::int32_t count = 0;
    sites->count(count);
    for (std::int32_t i = 0; i < count; ++i) {
        AutomationRef<CivilSite> candidate;
        sites->item(Variant::int32(i), candidate.receive());
        if (!candidate) {
            return -1; // silently: the message belongs to the listing
        }
        std::string candidateName;
        candidate->getName(candidateName);
        if (candidateName == name) {
            site = std::move(candidate);
            return 0;
        }
    }
    return -1;
}

std::int32_t MirdaneCorridorUtility::collectAlignments(std::map<std::string, MdDbObjectId>& alignments) {
    try {
        AutomationRef<SiteCollection> sites;
        raiseOnFailure(civilDatabase_->getSites(sites.receive()));
        std::int32_t count = 0;
        raiseOnFailure(sites->count(count));
        for (std::int32_t i = 0; i < count; ++i) {
            AutomationRef<CivilSite> site;
            raiseOnFailure(sites->item(Variant::int32(i), site.receive()));
            collectSite(site, alignments);
        }
    } catch (MirdanException* exception) {
        delete exception;
        return -1;
    }
    return 0;
}

std::string MirdaneCorridorUtility::getAlignmentName(MdDbObjectId id) {
    try {
        const AutomationRef<CivilAlignment> alignment = alignmentOf(civilDatabase_, id);
        std::string name;
        raiseOnFailure(alignment->getName(name));
        return name;
    } catch (MirdanException* exception) {
        delete exception;
        return {};
    }
}

std::int32_t MirdaneCorridorUtility::pointAtStation(MdDbObjectId id, double station, PlanPoint& point) {
    return pointAtStationOffset(id, station, 0.0, point);
}

std::int32_t MirdaneCorridorUtility::pointAtStationOffset(MdDbObjectId id, double station, double offset,
                                                          PlanPoint& point) {
    try {
        AutomationRef<CivilAlignment> alignment = alignmentOf(civilDatabase_, id);
        PlanPoint found;
        raiseOnFailure(alignment->pointAt(station, offset, found.x, found.y));
        alignment.release();
        point = found;
        return 0;
    } catch (MirdanException* exception) {
        delete exception;
        return -1;
    }
}

} // namespace fenmark::host
