// An alignment's element collection as the element pass sees it, over the automation object of the host.
#pragma once

#include "host/adapter/automation_ref.h"
#include "host/boundary/alignment_elements.h"

#include <memory>

namespace fenmark::host {

class ElementCollectionAdapter : public AlignmentElements {
  public:
    explicit ElementCollectionAdapter(AutomationRef<mirdane::ElementCollection> elements)
        : elements_(std::move(elements)) {}

    std::int32_t addFixedLine(const MdGePoint3d& start, const MdGePoint3d& end,
                              std::unique_ptr<AlignmentElement>& element) override;
    std::int32_t addFixedCurve(const MdGePoint3d& start, const MdGePoint3d& end, double radius, std::int16_t direction,
                               std::unique_ptr<AlignmentElement>& element) override;
    std::int32_t addFixedSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                                double startRadius, double endRadius, double length, std::int16_t direction,
                                std::int32_t spiralKind, std::unique_ptr<AlignmentElement>& element) override;

  private:
    AutomationRef<mirdane::ElementCollection> elements_;
};

} // namespace fenmark::host
