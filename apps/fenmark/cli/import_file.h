// The import of one file into the drawing of a host.
#pragma once

#include "cli/messages.h"
#include "cli/options.h"
#include "command/dialogs.h"
#include "host/embedded/embedded_host.h"

#include <string>
#include <vector>

namespace fenmark::cli {

// What became of one file.
struct FileResult {
    int code = kDone;
    command::ImportResult result;
    std::string logPath;
};

// Another program was quicker with the same drawing: nothing was written, and nothing was reported yet.
class Overtaken : public Stop {
  public:
    using Stop::Stop;
};

// Runs the command for one file and keeps the drawing and the log on disk, the log last. `madeNow` is what this call has
// imported into the drawing. Raises Stop, with both on disk as they were unless a part was to be kept; Overtaken if it
// should be tried once more.
FileResult importFile(host::embedded::EmbeddedHost& host, const ImportArguments& given, const std::string& file,
                      const std::string& drawingPath, std::vector<host::MdDbObjectId>& madeNow, const Streams& streams);

} // namespace fenmark::cli
