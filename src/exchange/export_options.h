// What a user may choose for an exported file. Each format takes what concerns it.
#pragma once

#include "exchange/landxml.h"
#include "exchange/selection.h"

#include <cstdint>

namespace fenmark::exchange {

enum class DxfVersion : std::uint8_t { R12, R2000, R2018 };
enum class DxfLayers : std::uint8_t {
    Kinds,   // a layer for each kind of object, with a colour
    Drawing, // the drawing's own
};

struct ExportOptions {
    Selection selection;
    int zone = 0;       // plane rectangular zone, 1 to 19; 0: the drawing's
    bool plane = false; // metres east and north in place of longitude and latitude
    DxfVersion dxfVersion = DxfVersion::R2000;
    DxfLayers dxfLayers = DxfLayers::Kinds;
    bool elements = false; // an entity for each element of an alignment
    LandXmlProfile landXmlProfile = LandXmlProfile::LandXml;
    double scale = 500.0; // of the plan that texts are sized for: 1 to this
    std::string title;    // of the survey, in SIMA
    bool columns = false; // SIMA fields in fixed columns, names padded with blanks
};

} // namespace fenmark::exchange
