// The drawing that an import goes into: opened, made ready for what the options name, and saved.
#pragma once

#include "cli/cli.h"
#include "cli/options.h"
#include "drawing/drawing.h"
#include "host/embedded/embedded_host.h"
#include "sima/reader/progress.h"
#include "values/outcome.h"

#include <string>

namespace fenmark::cli {

// A drawing is new only where it is certain that none is there. What could not be written in the end is refused at once,
// before the file is read. Raises Stop.
void openForImport(host::embedded::EmbeddedHost& host, const std::string& path, const ImportArguments& arguments,
                   const Streams& streams);

// What the options name must be there, or be made where an option allows it. Returns the options with the names that
// the drawing has for them. Raises Stop.
ImportArguments prepareForImport(drawing::Drawing& drawing, const ImportArguments& given, const std::string& path,
                                 Language language);

// With a bar where `bars` makes one; null: none is shown.
Outcome saveDrawing(host::embedded::Document& document, const std::string& path, sima::ProgressFactory* bars,
                    Language language);

} // namespace fenmark::cli
