// The embedded host: documents, settings, notes.
#include "host/embedded/embedded_host.h"

#include "host/embedded/automation_objects.h"
#include "host/embedded/database_objects.h"
#include "host/embedded/host_heap.h"
#include "host/embedded/map_objects.h"
#include "host/embedded/route_fit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace fenmark::host::embedded {

namespace {

EmbeddedHost* currentHost = nullptr;

// Whether the object of an identifier is in a drawing that the host has open.
bool isInAnyDocument(MdDbObjectId id) {
    const EmbeddedHost* const host = EmbeddedHost::current();
    return host != nullptr && std::any_of(host->documents().begin(), host->documents().end(),
                                          [id](const auto& document) { return document->drawing().has(id); });
}

} // namespace

Counters& counters() {
    static Counters all;
    return all;
}

Document::Document()
    : databaseObjects_(std::make_unique<DatabaseObjects>(*this)), mapObjects_(std::make_unique<MapObjects>(*this)) {}

Document::~Document() = default;

class EmbeddedHost::DocumentManager : public mirdane::MdApDocManager {
  public:
    explicit DocumentManager(EmbeddedHost& host) : host_(host) {}
    mirdane::MdApDocument* curDocument() const override { return host_.currentDocument(); }
    void addReactor(mirdane::MdApDocManagerReactor* reactor) override { reactors_.push_back(reactor); }
    void removeReactor(mirdane::MdApDocManagerReactor* reactor) override { std::erase(reactors_, reactor); }
    void tellDestroyed(Document& document) {
        const std::vector<mirdane::MdApDocManagerReactor*> called = reactors_; // a reactor may take itself off the list
        for (mirdane::MdApDocManagerReactor* reactor : called) {
            reactor->documentToBeDestroyed(&document);
        }
    }

  private:
    EmbeddedHost& host_;
    std::vector<mirdane::MdApDocManagerReactor*> reactors_;
};

EmbeddedHost::EmbeddedHost()
    : documentManager_(std::make_unique<DocumentManager>(*this)), application_(makeApplication()),
      before_(currentHost) {
    currentHost = this;
    setIdentifierCheck(isInAnyDocument);
    newDocument();
}

EmbeddedHost::~EmbeddedHost() {
    while (!documents_.empty()) {
        closeDocument(*documents_.back());
    }
    documentManager_.reset();
    ++counters().automationReferences; // the host's own reference, which was never counted
    application_->release();
    if (currentHost == this) {
        currentHost = before_;
    }
    if (currentHost == nullptr) {
        setIdentifierCheck(nullptr);
    }
}

EmbeddedHost* EmbeddedHost::current() {
    return currentHost;
}

Document& EmbeddedHost::newDocument() {
    documents_.push_back(std::make_unique<Document>());
    currentDocument_ = documents_.back().get();
    clearNotes();
    return *currentDocument_;
}

void EmbeddedHost::makeCurrent(Document& document) {
    currentDocument_ = &document;
    clearNotes();
}

void EmbeddedHost::closeDocument(Document& document) {
    documentManager_->tellDestroyed(document);
    std::erase_if(documents_, [&](const std::unique_ptr<Document>& owned) { return owned.get() == &document; });
    if (currentDocument_ == &document) {
        currentDocument_ = documents_.empty() ? nullptr : documents_.front().get();
        clearNotes();
    }
}

bool EmbeddedHost::owns(const Document* document) const {
    return std::any_of(documents_.begin(), documents_.end(),
                       [&](const std::unique_ptr<Document>& owned) { return owned.get() == document; });
}

LayoutNotes EmbeddedHost::layoutNotes() const {
    LayoutNotes notes;
    if (currentDocument_ == nullptr) {
        return notes;
    }
    const Drawing& drawing = currentDocument_->drawing();
    for (const auto& [id, element] : refused_) {
        if (const std::optional<std::size_t> alignment = drawing.findAlignment(id)) {
            notes.refused.push_back(element);
            notes.refused.back().alignment = drawing.alignment(*alignment).name;
            notes.refused.back().length = drawing.alignment(*alignment).length();
        }
    }
    LinePoints points;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (drawing.alignment(i).id.asUint64() <= notesFrom_) {
            continue;
        }
        for (const Element& element : drawing.alignment(i).elements) {
            notes.otherSense += element.otherSense ? 1 : 0;
        }
        const std::vector<BrokenJoint> joints = brokenJoints(drawing.alignment(i), {positiveRadius_, planTangents_});
        notes.brokenJoints.insert(notes.brokenJoints.end(), joints.begin(), joints.end());
        const std::vector<UnusualElement> unusual = unusualElements(drawing.alignment(i), points);
        notes.unusual.insert(notes.unusual.end(), unusual.begin(), unusual.end());
    }
    for (const auto& [id, misfit] : misfits_) {
        if (const std::optional<std::size_t> alignment = drawing.findAlignment(id)) {
            notes.misfits.push_back(misfit);
            notes.misfits.back().alignment = drawing.alignment(*alignment).name;
        }
    }
    return notes;
}

void EmbeddedHost::noteRefused(MdDbObjectId alignment, const RefusedElement& element) {
    refused_.emplace_back(alignment, element);
}

void EmbeddedHost::noteRoute(MdDbObjectId id, std::span<const MdGePoint3d> points) {
    const Drawing& drawing = currentDocument_->drawing();
    const std::optional<std::size_t> index = drawing.findAlignment(id);
    if (!index || points.empty()) {
        return;
    }
    const std::vector<Element>& elements = drawing.alignment(*index).elements;
    const bool clothoids = std::any_of(elements.begin(), elements.end(),
                                       [](const Element& element) { return element.type == ElementType::Clothoid; });
    // Straights and arcs run through the ends that they were given.
    if (elements.empty() || (!clothoids && elements.size() + 1 == points.size())) {
        return;
    }
    if (offAtEnds(elements, points) <= kMisfit && fitsInOrder(elements, points, kMisfit)) {
        return;
    }
    const auto distanceFrom = [&](const MdGePoint3d& point) {
        const std::optional<StationOffset> foot = drawing.geometry(*index).locate({point.x, point.y});
        return foot ? std::abs(foot->offset) : 0.0;
    };
    const FarthestPoint farthest = farthestPoint(elements, points, distanceFrom);
    if (!(farthest.distance > kMisfit)) {
        return;
    }
    Misfit misfit;
    misfit.distance = farthest.distance;
    misfit.atLeast = farthest.atLeast;
    const bool continuing =
        std::any_of(elements.begin(), elements.end(), [](const Element& element) { return element.continuing; });
    misfit.heightsDiffer = continuing && !planTangents_ &&
                           std::any_of(points.begin(), points.end(),
                                       [&](const MdGePoint3d& point) { return point.z != points.front().z; });
    misfits_.emplace_back(id, misfit);
}

void EmbeddedHost::clearNotes() {
    misfits_.clear();
    refused_.clear();
    notesFrom_ = currentDocument_ == nullptr ? 0 : currentDocument_->drawing().lastId();
}

void EmbeddedHost::showMessageBox(std::string_view text, std::string_view caption) {
    messageBoxes_.push_back({std::string(text), std::string(caption)});
    if (messageHandler_) {
        messageHandler_(messageBoxes_.back());
    }
}

std::int64_t EmbeddedHost::liveAutomationReferences() {
    return counters().automationReferences;
}

std::int64_t EmbeddedHost::liveDatabaseObjects() {
    return counters().openObjects + counters().heapBlocks;
}

mirdane::MdApDocManager& EmbeddedHost::documentManager() {
    return *documentManager_;
}

mirdane::AutomationObject& EmbeddedHost::application() {
    return *application_;
}

} // namespace fenmark::host::embedded
