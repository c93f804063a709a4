// Where the logic gets its three boundary classes from.
#pragma once

#include "host/boundary/corridor_utility.h"
#include "host/boundary/drawing_writer.h"
#include "host/boundary/object_data_writer.h"

#include <memory>

namespace fenmark::host {

class HostBoundary {
  public:
    virtual ~HostBoundary() = default;
    virtual DrawingWriter& drawingWriter() = 0;
    virtual ObjectDataWriter& objectDataWriter() = 0;
    // A fresh, disconnected wrapper.
    virtual std::unique_ptr<CorridorUtility> makeCorridorUtility() = 0;
};

} // namespace fenmark::host
