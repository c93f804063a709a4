// Adding elements through automation.
#include "host/adapter/element_collection_adapter.h"

#include "host/adapter/automation_values.h"

#include <utility>

namespace fenmark::host {

namespace {

// The statuses of these reads are not looked at: a value that cannot be read stays 0.
class ElementHandle : public AlignmentElement {
  public:
    explicit ElementHandle(AutomationRef<mirdane::AlignmentElementObject> element) : element_(std::move(element)) {}

    std::int32_t elementId() override {
        std::int32_t id = 0;
        element_->getElementId(id);
        return id;
    }
    double endX() override { return read(&mirdane::AlignmentElementObject::getEndX); }
    double endY() override { return read(&mirdane::AlignmentElementObject::getEndY); }
    double arcValue1() override { return read(&mirdane::AlignmentElementObject::getArcValue1); }
    double arcValue2() override { return read(&mirdane::AlignmentElementObject::getArcValue2); }

  private:
    double read(mirdane::AutomationStatus (mirdane::AlignmentElementObject::*get)(double&)) {
        double value = 0.0;
        (element_.operator->()->*get)(value);
        return value;
    }

    AutomationRef<mirdane::AlignmentElementObject> element_;
};

std::int32_t give(mirdane::AutomationStatus status, AutomationRef<mirdane::AlignmentElementObject>& object,
                  std::unique_ptr<AlignmentElement>& element) {
    if (status == 0) {
        element = std::make_unique<ElementHandle>(std::move(object));
    }
    return status;
}

} // namespace

std::int32_t ElementCollectionAdapter::addFixedLine(const MdGePoint3d& start, const MdGePoint3d& end,
                                                    std::unique_ptr<AlignmentElement>& element) {
    const mirdane::Variant startPoint = pointVariant(start);
    const mirdane::Variant endPoint = pointVariant(end);
    AutomationRef<mirdane::AlignmentElementObject> line;
    return give(elements_->addFixedLine(startPoint, endPoint, line.receive()), line, element);
}

std::int32_t ElementCollectionAdapter::addFixedCurve(const MdGePoint3d& start, const MdGePoint3d& end, double radius,
                                                     std::int16_t direction,
                                                     std::unique_ptr<AlignmentElement>& element) {
    const mirdane::Variant startPoint = pointVariant(start);
    const mirdane::Variant endPoint = pointVariant(end);
    AutomationRef<mirdane::AlignmentElementObject> arc;
    return give(elements_->addFixedCurve(startPoint, endPoint, radius, direction, arc.receive()), arc, element);
}

std::int32_t ElementCollectionAdapter::addFixedSpiral(std::int32_t elementBefore, const MdGePoint3d& start,
                                                      const MdGePoint3d& pi, double startRadius, double endRadius,
                                                      double length, std::int16_t direction, std::int32_t spiralKind,
                                                      std::unique_ptr<AlignmentElement>& element) {
    const mirdane::Variant startPoint = pointVariant(start);
    const mirdane::Variant piPoint = pointVariant(pi);
    AutomationRef<mirdane::AlignmentElementObject> spiral;
    const mirdane::AutomationStatus status = elements_->addFixedSpiral(
        elementBefore, startPoint, piPoint, startRadius, endRadius, length, direction, spiralKind, spiral.receive());
    return give(status, spiral, element);
}

} // namespace fenmark::host
