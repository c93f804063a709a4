// What stands around the entities of a DXF file: header, classes, tables, blocks and objects.
#pragma once

#include "exchange/dxf_colour.h"
#include "exchange/dxf_writer.h"

#include <map>
#include <string>

namespace fenmark::exchange {

// What is known of a file before its entities are written.
struct DxfContents {
    drawing::Extent extent;                  // of what is written
    bool wholeExtent = true;                 // false if some of the drawing has no place
    std::map<std::string, DxfColour> layers; // as written, with their colours; "0" is among them
    double textHeight = 1.0;                 // metres
    std::uint64_t handles = 0;               // that the entities take at most
};

// Header, classes, tables, blocks, and the beginning of the entities.
void beginDxf(DxfWriter& writer, const DxfContents& contents);
// The end of the entities, objects, and the end of the file.
void endDxf(DxfWriter& writer);

} // namespace fenmark::exchange
