// The scripted automation objects of the civil edition.
#include "scripted_host.h"

#include <cstdio>

namespace fenmark::scripted {

namespace {

using namespace mirdane;

std::string real(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string describe(const Variant& variant) {
    switch (variant.kind()) {
    case Variant::Kind::Int32:
        return "i32 " + std::to_string(variant.integerValue());
    case Variant::Kind::Int:
        return "int " + std::to_string(variant.integerValue());
    case Variant::Kind::String:
        return "'" + variant.text() + "'";
    case Variant::Kind::RealArray: {
        const SafeArray& array = *variant.realArray();
        std::string text = "(";
        for (const double value : array.values()) {
            text += (text.size() > 1 ? " " : "") + real(value);
        }
        return text + (array.lowerBound() == 0 ? ")" : ") from another bound");
    }
    case Variant::Kind::Empty:
        break;
    }
    return "nothing";
}

// Releases are logged under the object's label; a query gives a new object of the interface asked for.
template <typename Interface>
class Object : public Interface, public Tracked {
  public:
    Object(Host& host, std::string label) : Tracked(std::move(label)), host_(host) {}
    void addReference() override {
        host_.note("hold " + label());
        ++references;
    }
    void release() override {
        host_.note("release " + label());
        if (--references < 0) {
            releasedTooOften = true;
        }
    }
    AutomationStatus query(InterfaceId id, void*& object) override;

  protected:
    Host& host_;
};

using Plain = Object<AutomationObject>;

class Style : public Object<StyleObject> {
  public:
    Style(Host& host, std::string label, std::string name) : Object(host, std::move(label)), name_(std::move(name)) {}
    AutomationStatus getName(std::string& name) override {
        if (host_.fails("getName of " + label())) {
            return 1;
        }
        name = name_;
        return 0;
    }

  private:
    std::string name_;
};

class Styles : public Object<StyleCollection> {
  public:
    Styles(Host& host, std::string label, const std::vector<std::string>& names)
        : Object(host, std::move(label)), names_(names) {}
    AutomationStatus item(const Variant& index, StyleObject*& style) override {
        style = nullptr;
        const std::string call = "item " + describe(index) + " of " + label();
        if (static_cast<std::size_t>(index.integerValue()) >= names_.size()) {
            host_.fails(call);
            return 1;
        }
        const std::string& name = names_[static_cast<std::size_t>(index.integerValue())];
        return host_.give(call, style, [&] { return host_.make<Style>("first of " + label(), name); });
    }

  private:
    const std::vector<std::string>& names_;
};

class Element : public Object<AlignmentElementObject> {
  public:
    Element(Host& host, std::string label, std::int32_t id) : Object(host, std::move(label)), id_(id) {}
    AutomationStatus getElementId(std::int32_t& id) override {
        if (host_.fails("getElementId")) {
            return 1;
        }
        id = id_;
        return 0;
    }
    AutomationStatus getEndX(double& x) override { return give("getEndX", x, host_.reportedEnd.x); }
    AutomationStatus getEndY(double& y) override { return give("getEndY", y, host_.reportedEnd.y); }
    AutomationStatus getArcValue1(double& value) override { return give("getArcValue1", value, 11.5); }
    AutomationStatus getArcValue2(double& value) override { return give("getArcValue2", value, 22.5); }

  private:
    AutomationStatus give(const char* call, double& out, double value) {
        if (host_.fails(call)) {
            return 1;
        }
        out = value;
        return 0;
    }
    std::int32_t id_;
};

class Elements : public Object<ElementCollection> {
  public:
    Elements(Host& host, std::string label, std::size_t alignment)
        : Object(host, std::move(label)), alignment_(alignment) {}
    AutomationStatus addFixedLine(const Variant& start, const Variant& end, AlignmentElementObject*& element) override {
        return add("line " + describe(start) + " " + describe(end), "line", element);
    }
    AutomationStatus addFixedCurve(const Variant& start, const Variant& end, double radius, std::int16_t direction,
                                   AlignmentElementObject*& element) override {
        return add("arc " + describe(start) + " " + describe(end) + " R " + real(radius) + " direction " +
                       std::to_string(direction),
                   "arc", element);
    }
    AutomationStatus addFixedSpiral(std::int32_t elementBefore, const Variant& start, const Variant& pi,
                                    double startRadius, double endRadius, double length, std::int16_t direction,
                                    std::int32_t spiralKind, AlignmentElementObject*& element) override {
        return add("spiral after " + std::to_string(elementBefore) + " " + describe(start) + " pi " + describe(pi) +
                       " R " + real(startRadius) + " R " + real(endRadius) + " L " + real(length) + " direction " +
                       std::to_string(direction) + " kind " + std::to_string(spiralKind),
                   "spiral", element);
    }
    AutomationStatus removeAt(const Variant& index) override {
        return host_.fails("removeAt " + describe(index)) ? 1 : 0;
    }

  private:
    AutomationStatus add(const std::string& call, const std::string& label, AlignmentElementObject*& element) {
        return host_.give("add " + call, element, [&] {
            host_.alignments[alignment_].elements.push_back(call);
            const auto id = static_cast<std::int32_t>(host_.alignments[alignment_].elements.size());
            return host_.make<Element>(label, id);
        });
    }
    std::size_t alignment_;
};

// An alignment of a site as listed, or one that was made: then it has an index.
class Alignment : public Object<CivilAlignment> {
  public:
    static constexpr std::size_t kListed = static_cast<std::size_t>(-1);
    Alignment(Host& host, std::string name, std::uint64_t id, std::size_t index)
        : Object(host, "alignment"), name_(std::move(name)), id_(id), index_(index) {}

    AutomationStatus getObjectId(std::uint64_t& id) override {
        if (host_.fails("getObjectId")) {
            return 1;
        }
        id = id_;
        return 0;
    }
    AutomationStatus setDescription(const std::string& text) override {
        if (host_.fails("setDescription " + text)) {
            return 1;
        }
        host_.alignments[index_].description = text;
        return 0;
    }
    AutomationStatus getName(std::string& name) override {
        if (host_.fails("getName of alignment")) {
            return 1;
        }
        name = name_;
        return 0;
    }
    AutomationStatus applyStyleByName(const Variant& name) override {
        return host_.fails("applyStyleByName " + describe(name)) ? 1 : 0;
    }
    AutomationStatus setStartStation(double station) override {
        if (host_.fails("setStartStation " + real(station))) {
            return 1;
        }
        host_.alignments[index_].startStation = station;
        return 0;
    }
    AutomationStatus pointAt(double station, double offset, double& x, double& y) override {
        if (host_.fails("pointAt " + real(station) + " " + real(offset)) || station < host_.firstStation ||
            station > host_.lastStation) {
            return 1;
        }
        x = station;
        y = -offset;
        return 0;
    }
    AutomationStatus getElements(ElementCollection*& elements) override {
        return host_.give("getElements", elements, [&] { return host_.make<Elements>("elements", index_); });
    }
    AutomationStatus applyStyleObject(StyleObject* style) override {
        return host_.fails(style != nullptr ? "applyStyleObject" : "applyStyleObject nothing") ? 1 : 0;
    }

  private:
    std::string name_;
    std::uint64_t id_;
    std::size_t index_;
};

class Alignments : public Object<AlignmentCollection> {
  public:
    Alignments(Host& host, std::size_t site) : Object(host, "alignments"), site_(site) {}
    AutomationStatus count(std::int32_t& count) override {
        if (host_.fails("count of alignments")) {
            return 1;
        }
        count = static_cast<std::int32_t>(host_.sites[site_].alignments.size());
        return 0;
    }
    AutomationStatus item(const Variant& index, CivilAlignment*& alignment) override {
        return host_.give("item " + describe(index) + " of alignments", alignment, [&] {
            const auto at = static_cast<std::size_t>(index.integerValue());
            return host_.make<Alignment>(host_.sites[site_].alignments[at], 100 * (site_ + 1) + at, Alignment::kListed);
        });
    }
    AutomationStatus add(const std::string& name, const std::string& layerName, const Variant& firstStyle,
                         const Variant& secondStyle, CivilAlignment*& alignment) override {
        const std::string call =
            "add alignment " + name + " " + layerName + " " + describe(firstStyle) + " " + describe(secondStyle);
        return host_.give(call, alignment, [&] {
            host_.alignments.push_back({name, layerName, firstStyle.text(), secondStyle.text(), "", 0.0, {}});
            return host_.make<Alignment>(name, 7000 + host_.alignments.size(), host_.alignments.size() - 1);
        });
    }

  private:
    std::size_t site_;
};

class SiteItem : public Object<CivilSite> {
  public:
    SiteItem(Host& host, std::size_t index) : Object(host, "site"), index_(index) {}
    AutomationStatus getName(std::string& name) override {
        if (host_.fails("getName of site")) {
            return 1;
        }
        name = host_.sites[index_].name;
        return 0;
    }
    AutomationStatus getAlignments(AlignmentCollection*& alignments) override {
        return host_.give("getAlignments", alignments, [&] { return host_.make<Alignments>(index_); });
    }

  private:
    std::size_t index_;
};

class Sites : public Object<SiteCollection> {
  public:
    explicit Sites(Host& host) : Object(host, "sites") {}
    AutomationStatus item(const Variant& index, CivilSite*& site) override {
        return host_.give("item " + describe(index) + " of sites", site,
                          [&] { return host_.make<SiteItem>(static_cast<std::size_t>(index.integerValue())); });
    }
    AutomationStatus count(std::int32_t& count) override {
        if (host_.fails("count of sites")) {
            return 1;
        }
        count = static_cast<std::int32_t>(host_.sites.size());
        return 0;
    }
    AutomationStatus add(const std::string& name, CivilSite*& site) override {
        return host_.give("add site " + name, site, [&] {
            host_.sites.push_back({name, {}});
            return host_.make<SiteItem>(host_.sites.size() - 1);
        });
    }
};

class Database : public Object<CivilDatabase> {
  public:
    explicit Database(Host& host) : Object(host, "civilDatabase") {}
    AutomationStatus getOwner(AutomationObject*& owner) override {
        return host_.give("getOwner", owner, [&] { return host_.make<Plain>("databaseOwner"); });
    }
    AutomationStatus objectFromId(std::uint64_t id, AutomationObject*& object) override {
        if (id == 0) {
            host_.fails("objectFromId 0");
            return 1;
        }
        return host_.give("objectFromId " + std::to_string(id), object, [&] { return host_.make<Plain>("object"); });
    }
    AutomationStatus getStyleCollectionA(StyleCollection*& styles) override {
        return host_.give("getStyleCollectionA", styles, [&] { return host_.make<Styles>("stylesA", host_.stylesA); });
    }
    AutomationStatus getSites(SiteCollection*& sites) override {
        return host_.give("getSites", sites, [&] { return host_.make<Sites>(); });
    }
    AutomationStatus getStyleCollectionB(StyleCollection*& styles) override {
        return host_.give("getStyleCollectionB", styles, [&] { return host_.make<Styles>("stylesB", host_.stylesB); });
    }
};

class LandDoc : public Object<LandDocument> {
  public:
    explicit LandDoc(Host& host) : Object(host, "landDocument") {}
    AutomationStatus getDatabase(AutomationObject*& database) override {
        return host_.give("getDatabase", database, [&] { return host_.make<Plain>("database object"); });
    }
};

template <typename Interface>
class Application : public Object<Interface> {
  public:
    using Object<Interface>::Object;
    AutomationStatus getActiveDocument(AutomationObject*& document) override {
        return this->host_.give("getActiveDocument of " + this->label(), document,
                                [&] { return this->host_.template make<Plain>("document of " + this->label()); });
    }
};

class MainApplication : public Object<HostApplication> {
  public:
    explicit MainApplication(Host& host) : Object(host, "hostApplication") {}
    AutomationStatus setPresented(bool presented) override {
        return host_.fails(presented ? "setPresented true" : "setPresented false") ? 1 : 0;
    }
    AutomationStatus getInterfaceObject(const std::string& programId, AutomationObject*& object) override {
        return host_.give("getInterfaceObject " + programId, object,
                          [&] { return host_.make<Plain>("application object"); });
    }
};

template <typename Interface>
AutomationStatus Object<Interface>::query(InterfaceId id, void*& object) {
    object = nullptr;
    const auto giveAs = [&](const char* name, auto make) {
        using Made = decltype(make());
        Made made = nullptr;
        const AutomationStatus status = host_.give(std::string("query ") + name, made, make);
        object = made;
        return status;
    };
    switch (id) {
    case InterfaceId::HostApplication:
        return giveAs("HostApplication", [&]() -> HostApplication* { return host_.make<MainApplication>(); });
    case InterfaceId::LandApplication:
        return giveAs("LandApplication", [&]() -> LandApplication* {
            return host_.make<Application<LandApplication>>("landApplication");
        });
    case InterfaceId::LandDocument:
        return giveAs("LandDocument", [&]() -> LandDocument* { return host_.make<LandDoc>(); });
    case InterfaceId::CivilDatabase:
        return giveAs("CivilDatabase", [&]() -> CivilDatabase* { return host_.make<Database>(); });
    case InterfaceId::RoadwayApplication:
        return giveAs("RoadwayApplication", [&]() -> RoadwayApplication* {
            return host_.make<Application<RoadwayApplication>>("roadwayApplication");
        });
    case InterfaceId::RoadwayDocument:
        return giveAs("RoadwayDocument",
                      [&]() -> RoadwayDocument* { return host_.make<Object<RoadwayDocument>>("roadwayDocument"); });
    case InterfaceId::CivilAlignment:
        return giveAs("CivilAlignment",
                      [&]() -> CivilAlignment* { return host_.make<Alignment>("中心線", 4711, Alignment::kListed); });
    }
    return 1;
}

} // namespace
} // namespace fenmark::scripted

namespace mirdane {

AutomationObject* MirdanGetIDispatch(bool addReference) {
    using namespace fenmark::scripted;
    AutomationObject* application = nullptr;
    Host& host = current();
    const int status = host.give(addReference ? "MirdanGetIDispatch true" : "MirdanGetIDispatch false", application,
                                 [&] { return host.make<Plain>("dispatch"); });
    return status == 0 ? application : nullptr;
}

std::unique_ptr<SafeArray> createSafeArray(std::int32_t lowerBound, std::size_t count) {
    if (fenmark::scripted::current().arraysLeft-- <= 0) {
        return nullptr;
    }
    return std::make_unique<SafeArray>(lowerBound, count);
}

void showMessageBox(std::string_view text, std::string_view caption) {
    fenmark::scripted::current().messageBoxes.push_back(std::string(caption) + ": " + std::string(text));
}

} // namespace mirdane
