// The declared surface, automation, answered by the embedded host.
//
// Objects are thin: they hold the document and an identifier, and look into the drawing when they are asked. An object
// whose document was closed, or whose alignment is gone, answers with a failure.
#include "host/embedded/alignment_settling.h"
#include "host/embedded/automation_objects.h"
#include "host/embedded/element_spans.h"
#include "host/embedded/embedded_host.h"
#include "host/embedded/host_heap.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <span>

namespace fenmark::host::embedded {

namespace {

using mirdane::AutomationObject;
using mirdane::AutomationStatus;
using mirdane::InterfaceId;
using mirdane::Variant;

constexpr AutomationStatus kDone = 0;
constexpr auto kNotImplemented = static_cast<AutomationStatus>(0x80004001U);
constexpr auto kNoInterface = static_cast<AutomationStatus>(0x80004002U);
constexpr auto kFailure = static_cast<AutomationStatus>(0x80004005U);
constexpr auto kBadArgument = static_cast<AutomationStatus>(0x80070057U);

// Reference counting for one interface. An object is made with one reference, the caller's.
template <typename Interface>
class Counted : public Interface {
  public:
    Counted() { ++counters().automationReferences; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() = default;

    void addReference() override {
        ++references_;
        ++counters().automationReferences;
    }
    void release() override {
        --counters().automationReferences;
        if (--references_ == 0) {
            delete this;
        }
    }
    AutomationStatus query(InterfaceId id, void*& object) override {
        object = nullptr;
        if constexpr (requires { Interface::kInterface; }) {
            if (id == Interface::kInterface) {
                addReference();
                object = static_cast<Interface*>(this);
                return kDone;
            }
        }
        return kNoInterface;
    }

  private:
    std::int64_t references_ = 1;
};

// Returns an object under the pointer type that the caller asks for.
template <typename Interface>
AutomationStatus give(Interface*& out, Interface* object) {
    out = object;
    return kDone;
}

Drawing* drawingOf(Document* document) {
    EmbeddedHost* host = EmbeddedHost::current();
    return host != nullptr && host->owns(document) ? &document->drawing() : nullptr;
}

std::optional<std::size_t> indexIn(const Variant& index, std::size_t count) {
    const bool isIndex = index.kind() == Variant::Kind::Int32 || index.kind() == Variant::Kind::Int;
    if (!isIndex || index.integerValue() < 0 || static_cast<std::size_t>(index.integerValue()) >= count) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(index.integerValue());
}

std::optional<PlanPoint> planPoint(const Variant& point) {
    const mirdane::SafeArray* array = point.kind() == Variant::Kind::RealArray ? point.realArray() : nullptr;
    if (array == nullptr || array->lowerBound() != 0 || array->values().size() != 3) {
        return std::nullopt;
    }
    return PlanPoint{array->values()[0], array->values()[1]};
}

// --- styles ---

class Style final : public Counted<mirdane::StyleObject> {
  public:
    AutomationStatus getName(std::string& name) override {
        name = kStandardStyle;
        return kDone;
    }
};

class Styles final : public Counted<mirdane::StyleCollection> {
  public:
    AutomationStatus item(const Variant& index, mirdane::StyleObject*& style) override {
        style = nullptr;
        if (!indexIn(index, 1)) {
            return kBadArgument;
        }
        return give<mirdane::StyleObject>(style, new Style);
    }
};

// --- alignments ---

class ElementObject final : public Counted<mirdane::AlignmentElementObject> {
  public:
    explicit ElementObject(const Element& element) : element_(element) {}
    AutomationStatus getElementId(std::int32_t& id) override {
        id = element_.id;
        return kDone;
    }
    AutomationStatus getEndX(double& x) override {
        x = element_.end.x;
        return kDone;
    }
    AutomationStatus getEndY(double& y) override {
        y = element_.end.y;
        return kDone;
    }
    // Of an arc: its middle.
    AutomationStatus getArcValue1(double& value) override {
        if (element_.type != ElementType::Arc) {
            return kNotImplemented;
        }
        value = element_.centre().x;
        return kDone;
    }
    AutomationStatus getArcValue2(double& value) override {
        if (element_.type != ElementType::Arc) {
            return kNotImplemented;
        }
        value = element_.centre().y;
        return kDone;
    }

  private:
    Element element_;
};

// What an alignment and its element collection share.
class AlignmentReference {
  public:
    AlignmentReference(Document* document, MdDbObjectId id) : document_(document), id_(id) {}
    // False if the alignment is gone.
    bool find() {
        drawing_ = drawingOf(document_);
        const std::optional<std::size_t> index = drawing_ == nullptr ? std::nullopt : drawing_->findAlignment(id_);
        index_ = index.value_or(0);
        return index.has_value();
    }
    // Decides the turning senses of what was laid since, after find. The elements before that are as they were.
    void settle() {
        EmbeddedHost& host = *EmbeddedHost::current();
        if (!host.isUnsettled(id_)) {
            return;
        }
        if (host.positiveRadius() == PositiveRadius::Auto) {
            drawing_->relayLastElements(index_, settledElements(alignment().elements));
        }
        host.noteUnsettled({});
    }
    bool findSettled() {
        const bool found = find();
        if (found) {
            settle();
        }
        return found;
    }
    Drawing& drawing() { return *drawing_; }
    std::size_t index() const { return index_; }
    const Alignment& alignment() const { return drawing_->alignment(index_); }
    MdDbObjectId id() const { return id_; }

  private:
    Document* document_;
    MdDbObjectId id_;
    Drawing* drawing_ = nullptr;
    std::size_t index_ = 0;
};

class Elements final : public Counted<mirdane::ElementCollection> {
  public:
    explicit Elements(const AlignmentReference& reference) : at_(reference) {}
    // Whoever adds elements releases the collection when the alignment is complete. What cannot be done here for want
    // of memory is done when the alignment is asked next.
    ~Elements() override {
        try {
            if (at_.find()) {
                at_.settle();
            }
        } catch (const std::bad_alloc&) {
            return;
        }
    }

    AutomationStatus addFixedLine(const Variant& start, const Variant& end,
                                  mirdane::AlignmentElementObject*& element) override {
        element = nullptr;
        const std::optional<PlanPoint> from = planPoint(start);
        const std::optional<PlanPoint> to = planPoint(end);
        if (!from || !to || !at_.find()) {
            return kBadArgument;
        }
        return append(layLine(at_.alignment().elements, *from, *to), element);
    }

    AutomationStatus addFixedCurve(const Variant& start, const Variant& end, double radius, std::int16_t direction,
                                   mirdane::AlignmentElementObject*& element) override {
        element = nullptr;
        const std::optional<PlanPoint> from = planPoint(start);
        const std::optional<PlanPoint> to = planPoint(end);
        if (!from || !to || !at_.find()) {
            return kBadArgument;
        }
        const std::optional<Element> laid = layCurve(at_.alignment().elements, *from, *to, radius, direction, sense());
        if (laid) {
            return append(*laid, element);
        }
        RefusedElement refused;
        refused.why = whyCurveRefused(radius);
        refused.radius = radius;
        refused.chord = std::hypot(to->x - from->x, to->y - from->y);
        return refuse(refused);
    }

    AutomationStatus addFixedSpiral(std::int32_t elementBefore, const Variant& start, const Variant& pi,
                                    double startRadius, double endRadius, double length, std::int16_t direction,
                                    std::int32_t spiralKind, mirdane::AlignmentElementObject*& element) override {
        constexpr std::int32_t kClothoidKind = 1;
        element = nullptr;
        const std::optional<PlanPoint> from = planPoint(start);
        const std::optional<PlanPoint> meeting = planPoint(pi);
        if (!from || !meeting || spiralKind != kClothoidKind || !at_.find()) {
            return kBadArgument;
        }
        const std::optional<Element> laid = laySpiral(at_.alignment().elements, elementBefore, *from, *meeting,
                                                      startRadius, endRadius, length, direction, sense());
        if (laid) {
            return append(*laid, element);
        }
        RefusedElement refused;
        refused.why = whySpiralRefused(startRadius, endRadius, length);
        return refuse(refused);
    }

    AutomationStatus removeAt(const Variant& index) override {
        if (!at_.find()) {
            return kFailure;
        }
        at_.settle();
        const std::optional<std::size_t> element = indexIn(index, at_.alignment().elements.size());
        if (!element) {
            return kBadArgument;
        }
        at_.drawing().removeElement(at_.index(), *element);
        return kDone;
    }

  private:
    static PositiveRadius sense() { return EmbeddedHost::current()->positiveRadius(); }

    AutomationStatus refuse(const RefusedElement& element) {
        at_.settle();
        EmbeddedHost::current()->noteRefused(at_.id(), element);
        return kBadArgument;
    }
    // A spiral without a PI ends elsewhere the other way, and the next one begins there. Where the element behind it does
    // not join it, the last elements are settled for the time being, so that what follows gets the right place.
    void settleDrift() {
        constexpr std::size_t kForTheTimeBeing = 32; // elements, so that an addition does not look at all of them
        const std::vector<Element>& elements = at_.alignment().elements;
        if (sense() != PositiveRadius::Auto || elements.size() < 2 || !elements[elements.size() - 2].continuing) {
            return;
        }
        const double tangent = elements[elements.size() - 2].endDirection();
        if (std::abs(wrapped(elements.back().direction - tangent)) > kBrokenJoint) {
            const std::span<const Element> all(elements);
            at_.drawing().relayLastElements(at_.index(),
                                            settledElements(all.last(std::min(all.size(), kForTheTimeBeing))));
        }
    }
    AutomationStatus append(const Element& laid, mirdane::AlignmentElementObject*& element) {
        EmbeddedHost::current()->noteUnsettled(at_.id());
        at_.drawing().addElement(at_.index(), laid);
        settleDrift();
        return give<mirdane::AlignmentElementObject>(element, new ElementObject(at_.alignment().elements.back()));
    }

    AlignmentReference at_;
};

class AlignmentObject final : public Counted<mirdane::CivilAlignment> {
  public:
    AlignmentObject(Document* document, MdDbObjectId id) : at_(document, id) {}

    AutomationStatus getObjectId(std::uint64_t& id) override {
        id = 0;
        if (!at_.findSettled()) {
            return kFailure;
        }
        id = at_.id().asUint64();
        return kDone;
    }
    AutomationStatus setDescription(const std::string& text) override {
        if (!at_.find()) {
            return kFailure;
        }
        at_.drawing().setDescription(at_.index(), text);
        return kDone;
    }
    AutomationStatus getName(std::string& name) override {
        if (!at_.find()) {
            return kFailure;
        }
        name = at_.alignment().name;
        return kDone;
    }
    AutomationStatus applyStyleByName(const Variant& name) override {
        return at_.find() && name.kind() == Variant::Kind::String && name.text() == kStandardStyle ? kDone
                                                                                                   : kBadArgument;
    }
    AutomationStatus setStartStation(double station) override {
        if (!at_.findSettled() || !std::isfinite(station)) {
            return kBadArgument;
        }
        at_.drawing().setStartStation(at_.index(), station);
        return kDone;
    }
    AutomationStatus pointAt(double station, double offset, double& x, double& y) override {
        if (!at_.findSettled()) {
            return kFailure;
        }
        const std::optional<PlanPoint> point = at_.drawing().geometry(at_.index()).pointAt(station, offset);
        if (!point) {
            return kBadArgument;
        }
        x = point->x;
        y = point->y;
        return kDone;
    }
    AutomationStatus getElements(mirdane::ElementCollection*& elements) override {
        elements = nullptr;
        if (!at_.findSettled()) {
            return kFailure;
        }
        return give<mirdane::ElementCollection>(elements, new Elements(at_));
    }
    AutomationStatus applyStyleObject(mirdane::StyleObject* style) override {
        return at_.find() && style != nullptr ? kDone : kBadArgument;
    }

  private:
    AlignmentReference at_;
};

class Alignments final : public Counted<mirdane::AlignmentCollection> {
  public:
    Alignments(Document* document, MdDbObjectId site) : document_(document), site_(site) {}

    AutomationStatus count(std::int32_t& count) override {
        count = static_cast<std::int32_t>(ids().size());
        return kDone;
    }
    AutomationStatus item(const Variant& index, mirdane::CivilAlignment*& alignment) override {
        alignment = nullptr;
        const std::vector<MdDbObjectId> all = ids();
        const std::optional<std::size_t> at = indexIn(index, all.size());
        if (!at) {
            return kBadArgument;
        }
        return give<mirdane::CivilAlignment>(alignment, new AlignmentObject(document_, all[*at]));
    }
    AutomationStatus add(const std::string& name, const std::string& layerName, const Variant& firstStyle,
                         const Variant& secondStyle, mirdane::CivilAlignment*& alignment) override {
        alignment = nullptr;
        Drawing* drawing = drawingOf(document_);
        if (drawing == nullptr || !drawing->findSite(site_)) {
            return kFailure;
        }
        if (!drawing->findLayer(layerName) || firstStyle.text() != kStandardStyle ||
            secondStyle.text() != kStandardStyle) {
            return kBadArgument;
        }
        const std::size_t index = drawing->addAlignment(site_, name, layerName, firstStyle.text(), secondStyle.text());
        return give<mirdane::CivilAlignment>(alignment, new AlignmentObject(document_, drawing->alignment(index).id));
    }

  private:
    // Made once for a walk by index; a walk over thousands of alignments stays in step with their number.
    const std::vector<MdDbObjectId>& ids() {
        const Drawing* drawing = drawingOf(document_);
        const std::size_t total = drawing == nullptr ? 0 : drawing->alignmentCount();
        if (total != seen_) {
            ids_.clear();
            for (std::size_t i = 0; i < total; ++i) {
                if (drawing->alignment(i).site == site_) {
                    ids_.push_back(drawing->alignment(i).id);
                }
            }
            seen_ = total;
        }
        return ids_;
    }

    Document* document_;
    MdDbObjectId site_;
    std::vector<MdDbObjectId> ids_;
    std::size_t seen_ = 0;
};

// --- sites ---

class SiteObject final : public Counted<mirdane::CivilSite> {
  public:
    SiteObject(Document* document, MdDbObjectId id) : document_(document), id_(id) {}

    AutomationStatus getName(std::string& name) override {
        const Drawing* drawing = drawingOf(document_);
        const std::optional<std::size_t> index = drawing == nullptr ? std::nullopt : drawing->findSite(id_);
        if (!index) {
            return kFailure;
        }
        name = drawing->sites()[*index].name;
        return kDone;
    }
    AutomationStatus getAlignments(mirdane::AlignmentCollection*& alignments) override {
        alignments = nullptr;
        if (drawingOf(document_) == nullptr) {
            return kFailure;
        }
        return give<mirdane::AlignmentCollection>(alignments, new Alignments(document_, id_));
    }

  private:
    Document* document_;
    MdDbObjectId id_;
};

class Sites final : public Counted<mirdane::SiteCollection> {
  public:
    explicit Sites(Document* document) : document_(document) {}

    AutomationStatus item(const Variant& index, mirdane::CivilSite*& site) override {
        site = nullptr;
        const Drawing* drawing = drawingOf(document_);
        const std::optional<std::size_t> at =
            drawing == nullptr ? std::nullopt : indexIn(index, drawing->sites().size());
        if (!at) {
            return kBadArgument;
        }
        return give<mirdane::CivilSite>(site, new SiteObject(document_, drawing->sites()[*at].id));
    }
    AutomationStatus count(std::int32_t& count) override {
        const Drawing* drawing = drawingOf(document_);
        if (drawing == nullptr) {
            return kFailure;
        }
        count = static_cast<std::int32_t>(drawing->sites().size());
        return kDone;
    }
    // A name that is taken is refused.
    AutomationStatus add(const std::string& name, mirdane::CivilSite*& site) override {
        site = nullptr;
        Drawing* drawing = drawingOf(document_);
        if (drawing == nullptr || drawing->findSite(name)) {
            return kBadArgument;
        }
        return give<mirdane::CivilSite>(site, new SiteObject(document_, drawing->addSite(name)));
    }

  private:
    Document* document_;
};

// --- database, documents, applications ---

// The owner of the database is only ever held.
class Owner final : public Counted<AutomationObject> {};

class Database final : public Counted<mirdane::CivilDatabase> {
  public:
    explicit Database(Document* document) : document_(document) {}

    AutomationStatus getOwner(AutomationObject*& owner) override { return give<AutomationObject>(owner, new Owner); }
    AutomationStatus objectFromId(std::uint64_t id, AutomationObject*& object) override {
        object = nullptr;
        const Drawing* drawing = drawingOf(document_);
        if (drawing == nullptr || !drawing->findAlignment(MdDbObjectId(id))) {
            return kBadArgument;
        }
        return give<AutomationObject>(object, new AlignmentObject(document_, MdDbObjectId(id)));
    }
    AutomationStatus getStyleCollectionA(mirdane::StyleCollection*& styles) override {
        return give<mirdane::StyleCollection>(styles, new Styles);
    }
    AutomationStatus getSites(mirdane::SiteCollection*& sites) override {
        return give<mirdane::SiteCollection>(sites, new Sites(document_));
    }
    AutomationStatus getStyleCollectionB(mirdane::StyleCollection*& styles) override {
        return give<mirdane::StyleCollection>(styles, new Styles);
    }

  private:
    Document* document_;
};

class LandDocumentObject final : public Counted<mirdane::LandDocument> {
  public:
    explicit LandDocumentObject(Document* document) : document_(document) {}
    AutomationStatus getDatabase(AutomationObject*& database) override {
        return give<AutomationObject>(database, new Database(document_));
    }

  private:
    Document* document_;
};

class RoadwayDocumentObject final : public Counted<mirdane::RoadwayDocument> {};

template <typename Interface, typename MakeDocument>
class CivilApplication final : public Counted<Interface> {
  public:
    explicit CivilApplication(MakeDocument make) : make_(make) {}
    AutomationStatus getActiveDocument(AutomationObject*& document) override {
        document = nullptr;
        const EmbeddedHost* host = EmbeddedHost::current();
        if (host == nullptr || host->currentDocument() == nullptr) {
            return kFailure;
        }
        return give<AutomationObject>(document, make_(host->currentDocument()));
    }

  private:
    MakeDocument make_;
};

template <typename Interface, typename MakeDocument>
AutomationObject* makeCivilApplication(MakeDocument make) {
    return new CivilApplication<Interface, MakeDocument>(make);
}

class Application final : public Counted<mirdane::HostApplication> {
  public:
    AutomationStatus setPresented(bool) override { return kDone; }
    AutomationStatus getInterfaceObject(const std::string& programId, AutomationObject*& object) override {
        object = nullptr;
        if (programId == mirdane::kLandProgramId) {
            object = makeCivilApplication<mirdane::LandApplication>(
                [](Document* document) -> AutomationObject* { return new LandDocumentObject(document); });
        } else if (programId == mirdane::kRoadwayProgramId) {
            object = makeCivilApplication<mirdane::RoadwayApplication>(
                [](Document*) -> AutomationObject* { return new RoadwayDocumentObject; });
        }
        return object == nullptr ? kBadArgument : kDone;
    }
};

} // namespace

AutomationObject* makeApplication() {
    AutomationObject* application = new Application;
    --counters().automationReferences;
    return application;
}

} // namespace fenmark::host::embedded

namespace mirdane {

std::unique_ptr<SafeArray> createSafeArray(std::int32_t lowerBound, std::size_t count) {
    return std::make_unique<SafeArray>(lowerBound, count);
}

AutomationObject* MirdanGetIDispatch(bool addReference) {
    fenmark::host::embedded::EmbeddedHost* host = fenmark::host::embedded::EmbeddedHost::current();
    if (host == nullptr) {
        return nullptr;
    }
    if (addReference) {
        host->application().addReference();
    }
    return &host->application();
}

void showMessageBox(std::string_view text, std::string_view caption) {
    if (fenmark::host::embedded::EmbeddedHost* host = fenmark::host::embedded::EmbeddedHost::current()) {
        host->showMessageBox(text, caption);
    }
}

} // namespace mirdane
