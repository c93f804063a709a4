// Connecting to the civil edition's objects and letting go of them.
#include "host/adapter/automation_values.h"
#include "host/adapter/mirdane_corridor_utility.h"

namespace fenmark::host {

namespace {

using mirdane::AutomationObject;

// Loads one of the civil applications and keeps it.
template <typename Application>
void loadApplication(const AutomationRef<mirdane::HostApplication>& host, const char* programId,
                     AutomationRef<Application>& application) {
    AutomationRef<AutomationObject> object;
    host->getInterfaceObject(automationString(programId), object.receive());
    queryInterface(object, application);
}

} // namespace

void MirdaneCorridorUtility::connect() {
    // Only the last step looks at a status; what is missing shows where it is needed.
    AutomationRef<AutomationObject> dispatch(mirdane::MirdanGetIDispatch(true));
    hostApplication_.release();
    queryInterface(dispatch, hostApplication_);
    dispatch.release();
    hostApplication_->setPresented(true);
    loadApplication(hostApplication_, mirdane::kLandProgramId, landApplication_);
    loadApplication(hostApplication_, mirdane::kRoadwayProgramId, roadwayApplication_);

    AutomationRef<AutomationObject> document;
    landApplication_->getActiveDocument(document.receive());
    queryInterface(document, landDocument_);
    AutomationRef<AutomationObject> database;
    landDocument_->getDatabase(database.receive());
    queryInterface(database, civilDatabase_);
    database.release();
    document.release();

    AutomationRef<AutomationObject> roadwayDocument;
    roadwayApplication_->getActiveDocument(roadwayDocument.receive());
    if (queryInterface(roadwayDocument, roadwayDocument_) == 0) {
        civilDatabase_->getOwner(databaseOwner_.receive());
    }
}

void MirdaneCorridorUtility::disconnect() {
    if (!hostApplication_) {
        throw AutomationError(kStatusPointerError, "the civil automation is not connected");
    }
    hostApplication_.release();
    landApplication_.release();
    roadwayApplication_.release();
    landDocument_.release();
    roadwayDocument_.release();
    databaseOwner_.release();
    // The civil database is kept until the utility goes.
}

} // namespace fenmark::host
