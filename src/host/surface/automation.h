// The declared host surface, automation: the civil edition's objects, with references counted as automation does.
//
// Every object obtained by a get, an item, an add or a query is the caller's and is released once. Every operation
// returns a 32-bit status, 0 for success.
#pragma once

#include "values/drawing_values.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The module meets these symbols at run time in the host that loads it.
#pragma GCC visibility push(default)

namespace mirdane {

using AutomationStatus = std::int32_t;

enum class InterfaceId {
    HostApplication,
    LandApplication,
    LandDocument,
    CivilDatabase,
    RoadwayApplication,
    RoadwayDocument,
    CivilAlignment,
};

class AutomationObject {
  public:
    virtual void addReference() = 0;
    virtual void release() = 0;
    // On success the object is given as the interface asked for, with one reference more. The pointer is that of the
    // interface's own class.
    virtual AutomationStatus query(InterfaceId id, void*& object) = 0;

  protected:
    ~AutomationObject() = default;
};

// A safe array of reals with a lower bound.
class SafeArray {
  public:
    SafeArray(std::int32_t lowerBound, std::size_t count) : lowerBound_(lowerBound), values_(count) {}
    std::int32_t lowerBound() const { return lowerBound_; }
    std::vector<double>& values() { return values_; }
    const std::vector<double>& values() const { return values_; }

  private:
    std::int32_t lowerBound_;
    std::vector<double> values_;
};

// Null if the array cannot be made. Implemented by the host.
std::unique_ptr<SafeArray> createSafeArray(std::int32_t lowerBound, std::size_t count);

// A variant of one of the kinds that the module passes: a signed 32-bit integer, a host "int", a string, a point.
class Variant {
  public:
    enum class Kind { Empty, Int32, Int, String, RealArray };

    Variant() = default;
    static Variant int32(std::int32_t value) { return Variant(Kind::Int32, value); }
    static Variant integer(std::int32_t value) { return Variant(Kind::Int, value); }
    static Variant string(std::string text) {
        Variant variant(Kind::String, 0);
        variant.text_ = std::move(text);
        return variant;
    }
    static Variant array(std::unique_ptr<SafeArray> values) {
        Variant variant(Kind::RealArray, 0);
        variant.array_ = std::move(values);
        return variant;
    }

    Kind kind() const { return kind_; }
    std::int32_t integerValue() const { return integer_; }
    const std::string& text() const { return text_; }
    const SafeArray* realArray() const { return array_.get(); }

  private:
    Variant(Kind kind, std::int32_t value) : kind_(kind), integer_(value) {}

    Kind kind_ = Kind::Empty;
    std::int32_t integer_ = 0;
    std::string text_;
    std::unique_ptr<SafeArray> array_;
};

class StyleObject : public AutomationObject {
  public:
    virtual AutomationStatus getName(std::string& name) = 0;
};

class StyleCollection : public AutomationObject {
  public:
    virtual AutomationStatus item(const Variant& index, StyleObject*& style) = 0;
};

class AlignmentElementObject : public AutomationObject {
  public:
    virtual AutomationStatus getElementId(std::int32_t& id) = 0;
    virtual AutomationStatus getEndX(double& x) = 0;
    virtual AutomationStatus getEndY(double& y) = 0;
    virtual AutomationStatus getArcValue1(double& value) = 0; // offered by an arc only
    virtual AutomationStatus getArcValue2(double& value) = 0; // offered by an arc only
};

class ElementCollection : public AutomationObject {
  public:
    virtual AutomationStatus addFixedLine(const Variant& start, const Variant& end,
                                          AlignmentElementObject*& element) = 0;
    virtual AutomationStatus addFixedCurve(const Variant& start, const Variant& end, double radius,
                                           std::int16_t direction, AlignmentElementObject*& element) = 0;
    virtual AutomationStatus addFixedSpiral(std::int32_t elementBefore, const Variant& start, const Variant& pi,
                                            double startRadius, double endRadius, double length, std::int16_t direction,
                                            std::int32_t spiralKind, AlignmentElementObject*& element) = 0;
    virtual AutomationStatus removeAt(const Variant& index) = 0;
};

class CivilAlignment : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::CivilAlignment;
    virtual AutomationStatus getObjectId(std::uint64_t& id) = 0;
    virtual AutomationStatus setDescription(const std::string& text) = 0;
    virtual AutomationStatus getName(std::string& name) = 0;
    virtual AutomationStatus applyStyleByName(const Variant& name) = 0;
    virtual AutomationStatus setStartStation(double station) = 0;
    virtual AutomationStatus pointAt(double station, double offset, double& x, double& y) = 0;
    virtual AutomationStatus getElements(ElementCollection*& elements) = 0;
    virtual AutomationStatus applyStyleObject(StyleObject* style) = 0;
};

class AlignmentCollection : public AutomationObject {
  public:
    virtual AutomationStatus count(std::int32_t& count) = 0;
    virtual AutomationStatus item(const Variant& index, CivilAlignment*& alignment) = 0;
    virtual AutomationStatus add(const std::string& name, const std::string& layerName, const Variant& firstStyle,
                                 const Variant& secondStyle, CivilAlignment*& alignment) = 0;
};

class CivilSite : public AutomationObject {
  public:
    virtual AutomationStatus getName(std::string& name) = 0;
    virtual AutomationStatus getAlignments(AlignmentCollection*& alignments) = 0;
};

class SiteCollection : public AutomationObject {
  public:
    virtual AutomationStatus item(const Variant& index, CivilSite*& site) = 0;
    virtual AutomationStatus count(std::int32_t& count) = 0;
    virtual AutomationStatus add(const std::string& name, CivilSite*& site) = 0;
};

class CivilDatabase : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::CivilDatabase;
    virtual AutomationStatus getOwner(AutomationObject*& owner) = 0;
    virtual AutomationStatus objectFromId(std::uint64_t id, AutomationObject*& object) = 0;
    virtual AutomationStatus getStyleCollectionA(StyleCollection*& styles) = 0;
    virtual AutomationStatus getSites(SiteCollection*& sites) = 0;
    virtual AutomationStatus getStyleCollectionB(StyleCollection*& styles) = 0;
};

class LandDocument : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::LandDocument;
    virtual AutomationStatus getDatabase(AutomationObject*& database) = 0;
};

class RoadwayDocument : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::RoadwayDocument;
};

class LandApplication : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::LandApplication;
    virtual AutomationStatus getActiveDocument(AutomationObject*& document) = 0;
};

class RoadwayApplication : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::RoadwayApplication;
    virtual AutomationStatus getActiveDocument(AutomationObject*& document) = 0;
};

class HostApplication : public AutomationObject {
  public:
    static constexpr InterfaceId kInterface = InterfaceId::HostApplication;
    virtual AutomationStatus setPresented(bool presented) = 0;
    virtual AutomationStatus getInterfaceObject(const std::string& programId, AutomationObject*& object) = 0;
};

inline constexpr const char* kLandProgramId = "CvxXUiLand.CvxApplication.13.5";
inline constexpr const char* kRoadwayProgramId = "CvxXUiRoadway.CvxRoadwayApplication.13.5";

// The application's automation object, with a reference for the caller; null if there is none.
AutomationObject* MirdanGetIDispatch(bool addReference);

// A message box without a parent window, plain flags.
void showMessageBox(std::string_view text, std::string_view caption);

} // namespace mirdane

#pragma GCC visibility pop
