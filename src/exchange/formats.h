// The table of export formats: what the command line, its help, its completion and the desktop program offer.
//
// A new format is one writer and one line in the table.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"
#include "values/outcome.h"

#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace fenmark::exchange {

struct Format {
    std::string_view extension; // of files of the format, with its dot
    std::string_view name;      // in English
    std::string_view japanese;  // and in Japanese
    bool isPlan;                // drawn by `fenmark plot`; all others are written by `fenmark export`
    bool degrees;               // has longitude and latitude, and so needs a zone
    bool planeToo;              // can have metres in their place
    bool zone;                  // tells the plane rectangular zone, or has degrees by it
    Notes (*write)(const drawing::Drawing& drawing, const ExportOptions& options, std::ostream& out);
};

// Writes what the options select, and tells where that is nothing.
[[nodiscard]] Notes writeAs(const Format& format, const drawing::Drawing& drawing, const ExportOptions& options,
                            std::ostream& out);

std::span<const Format> formats();

// The format of a file's extension, in any case; null if there is none.
const Format* formatOf(std::string_view path);

// The extensions of the plans, or of all other formats, as ".dxf, .xml or .csv" with " or " before the last.
[[nodiscard]] std::string extensions(bool plans, std::string_view beforeLast = " or ");

// Whether the zone of the drawing, or the one in its place, says anything in a file of the format.
[[nodiscard]] bool tellsZone(const Format& format, const ExportOptions& options);

// Fails where the format needs what the drawing and the options do not have; the message says what, and the remedy.
Outcome canWrite(const Format& format, const drawing::Drawing& drawing, const ExportOptions& options);

} // namespace fenmark::exchange
