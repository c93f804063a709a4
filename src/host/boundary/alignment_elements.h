// The element collection of one alignment, as the element pass sees it.
#pragma once

#include "values/drawing_values.h"

#include <cstdint>
#include <memory>

namespace fenmark::host {

// One element that the host has just added. Destroying it releases it.
class AlignmentElement {
  public:
    virtual ~AlignmentElement() = default;
    virtual std::int32_t elementId() = 0;
    virtual double endX() = 0; // drawing axes, metres
    virtual double endY() = 0;
    // Two further values that an arc alone offers; kept and never read.
    virtual double arcValue1() = 0;
    virtual double arcValue2() = 0;
};

// Every add returns a status, 0 for success, and fills the element on success. Points are in drawing axes, metres.
class AlignmentElements {
  public:
    virtual ~AlignmentElements() = default;
    virtual std::int32_t addFixedLine(const MdGePoint3d& start, const MdGePoint3d& end,
                                      std::unique_ptr<AlignmentElement>& element) = 0;
    virtual std::int32_t addFixedCurve(const MdGePoint3d& start, const MdGePoint3d& end, double radius,
                                       std::int16_t direction, std::unique_ptr<AlignmentElement>& element) = 0;
    // Infinite radii are positive infinity.
    virtual std::int32_t addFixedSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                                        double startRadius, double endRadius, double length, std::int16_t direction,
                                        std::int32_t spiralKind, std::unique_ptr<AlignmentElement>& element) = 0;
};

} // namespace fenmark::host
