// fenmark info and fenmark export: a drawing in other forms.
#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"
#include "exchange/formats.h"
#include "exchange/info.h"
#include "exchange/output_file.h"
#include "platform/paths.h"

#include <ostream>
#include <string>
#include <vector>

namespace fenmark::cli {

namespace {

using drawing::Load;

// Writes the drawing as the extension of the target says.
int writeDrawing(const ExportArguments& arguments, const Streams& streams) {
    const exchange::Format* const format = exchange::formatOf(arguments.target);
    if (format == nullptr || format->isPlan) {
        throw Stop(kWrongUsage, otherExtension(streams.language, arguments.target,
                                               exchange::extensions(false, said(streams.language, Text::Or))));
    }
    const auto drawing = readDrawingOrPackage(arguments.drawing, arguments.options.zone, streams, arguments.quiet);
    requireNoSource(*drawing, arguments.target, streams.language);
    // A package of another program may have been read by the zone.
    const int zone = arguments.options.zone;
    if (zone != 0 && zone != drawing->zone() && !exchange::tellsZone(*format, arguments.options)) {
        tellNote(streams, arguments.quiet,
                 inLanguage(streams, "このファイルに座標系は入らないため、--zone は使いませんでした",
                            "--zone was not needed: the file does not tell its zone"));
    }
    exchange::ExportOptions options = arguments.options;
    options.title = platform::utf8Of(platform::pathOf(arguments.target).stem());
    if (const Outcome can = exchange::canWrite(*format, *drawing, options); !can) {
        throw Stop(kNotDone, said(streams.language, format->planeToo ? Text::WithZoneOrPlane : Text::WithZone,
                                  {{"message", arguments.drawing + ": " + can.in(streams.language)}}));
    }
    for (const std::string& layer : options.selection.layers) {
        if (!drawing->findLayer(layer)) {
            std::vector<std::string> names;
            for (const drawing::Layer& known : drawing->layers()) {
                names.push_back(known.name);
            }
            throw Stop(
                kNotDone,
                said(streams.language, Text::NoLayer,
                     {{"path", arguments.drawing}, {"name", layer}, {"names", joined(names, streams.language)}}));
        }
    }
    exchange::Notes notes;
    require(streams, exchange::writeFile(arguments.target, [&](std::ostream& out) {
                notes = exchange::writeAs(*format, *drawing, options, out);
            }));
    tellNotes(streams, arguments.quiet, notes);
    return kDone;
}

} // namespace

int runInfo(const InfoArguments& arguments, const Streams& streams) {
    if (arguments.alignments) {
        const auto drawing = readDrawing(arguments.drawing, Load::WithoutEntities, streams);
        for (const std::string& name : alignmentNames(*drawing)) {
            streams.out << name << '\n';
        }
        return kDone;
    }
    const auto drawing = readDrawing(arguments.drawing, Load::Everything, streams);
    if (arguments.json) {
        exchange::writeInfoJson(*drawing, streams.out);
    } else {
        exchange::writeSummary(*drawing, streams.out);
    }
    return kDone;
}

int runExport(const ExportArguments& arguments, const Streams& streams) {
    return writeDrawing(arguments, streams);
}

} // namespace fenmark::cli
