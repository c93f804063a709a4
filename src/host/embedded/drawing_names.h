// The names of the drawing that the embedded host works with every day.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"

namespace fenmark::host::embedded {

using drawing::Alignment;
using drawing::AlignmentGeometry;
using drawing::Drawing;
using drawing::DrawingStore;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityKind;
using drawing::EntityView;
using drawing::kInfiniteRadius;
using drawing::kLineTolerance;
using drawing::kMostElementPoints;
using drawing::kStandardStyle;
using drawing::Layer;
using drawing::LinePoints;
using drawing::Load;
using drawing::ObjectDataTable;
using drawing::Pose;
using drawing::poseOnElement;
using drawing::RowView;
using drawing::Site;
using drawing::StationOffset;

} // namespace fenmark::host::embedded
