// fenmark info, fenmark export and fenmark plot: a drawing in other forms.
#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"
#include "exchange/csv.h"
#include "exchange/dxf.h"
#include "exchange/geojson.h"
#include "exchange/info.h"
#include "exchange/landxml.h"
#include "exchange/output_file.h"
#include "exchange/plan_svg.h"

#include <ostream>
#include <string_view>

namespace fenmark::cli {

namespace {

using drawing::Drawing;
using drawing::Load;

bool endsIn(std::string_view path, std::string_view extension) {
    if (path.size() < extension.size()) {
        return false;
    }
    path.remove_prefix(path.size() - extension.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        if ((c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) != extension[i]) {
            return false;
        }
    }
    return true;
}

struct Format {
    std::string_view extension;
    exchange::Notes (*write)(const Drawing& drawing, std::ostream& out);
};

constexpr Format kFormats[] = {
    {".dxf", exchange::writeDxf},
    {".xml", exchange::writeLandXml},
    {".geojson", exchange::writeGeoJson},
    {".csv", exchange::writeCsv},
};

int writeDrawing(const ExportArguments& arguments, const Format& format, const Streams& streams) {
    const auto drawing = readDrawing(arguments.drawing, Load::Everything, streams, arguments.quiet);
    exchange::Notes notes;
    const std::string failure =
        exchange::writeFile(arguments.target, [&](std::ostream& out) { notes = format.write(*drawing, out); });
    if (!failure.empty()) {
        throw Stop(kNotDone, failure);
    }
    for (const std::string& note : notes) {
        tellNote(streams, arguments.quiet, note);
    }
    return kDone;
}

} // namespace

int runInfo(const InfoArguments& arguments, const Streams& streams) {
    const auto drawing = readDrawing(arguments.drawing, Load::Everything, streams);
    if (arguments.json) {
        exchange::writeInfoJson(*drawing, streams.out);
    } else {
        exchange::writeSummary(*drawing, streams.out);
    }
    return kDone;
}

int runExport(const ExportArguments& arguments, const Streams& streams) {
    for (const Format& format : kFormats) {
        if (endsIn(arguments.target, format.extension)) {
            return writeDrawing(arguments, format, streams);
        }
    }
    throw Stop(kWrongUsage, arguments.target + ": the extension must be .dxf, .xml, .geojson or .csv");
}

int runPlot(const ExportArguments& arguments, const Streams& streams) {
    if (!endsIn(arguments.target, ".svg")) {
        throw Stop(kWrongUsage, arguments.target + ": the extension must be .svg");
    }
    return writeDrawing(arguments, {".svg", exchange::writePlanSvg}, streams);
}

} // namespace fenmark::cli
