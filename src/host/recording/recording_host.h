// A host that is not there: the three recording doubles over one recorded drawing.
#pragma once

#include "host/boundary/host_boundary.h"
#include "host/recording/call_log.h"
#include "host/recording/recording_corridor_utility.h"
#include "host/recording/recording_drawing_writer.h"
#include "host/recording/recording_object_data_writer.h"

#include <memory>

namespace fenmark::host {

// Begins as a new drawing does: the layer "0", which is current, and no site.
class RecordingHost : public HostBoundary {
  public:
    DrawingWriter& drawingWriter() override { return drawing; }
    ObjectDataWriter& objectDataWriter() override { return rows; }
    std::unique_ptr<CorridorUtility> makeCorridorUtility() override {
        return std::make_unique<RecordingCorridorUtility>(calls, ids_, civil, drawing.currentLayer);
    }

  private:
    IdSource ids_;

  public:
    CallLog calls;
    RecordingDrawingWriter drawing{calls, ids_};
    RecordingObjectDataWriter rows{calls};
    RecordedCivil civil;
};

} // namespace fenmark::host
