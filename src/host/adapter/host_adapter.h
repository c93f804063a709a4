// The host boundary over the declared host surface.
#pragma once

#include "host/adapter/mirdane_corridor_utility.h"
#include "host/adapter/mirdane_drawing_writer.h"
#include "host/adapter/mirdane_object_data_writer.h"
#include "host/boundary/host_boundary.h"

#include <memory>

namespace fenmark::host {

class HostAdapter : public HostBoundary {
  public:
    DrawingWriter& drawingWriter() override { return drawing_; }
    ObjectDataWriter& objectDataWriter() override { return rows_; }
    std::unique_ptr<CorridorUtility> makeCorridorUtility() override {
        return std::make_unique<MirdaneCorridorUtility>(drawing_);
    }

  private:
    MirdaneDrawingWriter drawing_;
    MirdaneObjectDataWriter rows_;
};

} // namespace fenmark::host
