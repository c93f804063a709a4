// fenmark plot: plans and sections on paper.
#include "exchange/plan/plot.h"

#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"
#include "exchange/formats.h"
#include "exchange/output_file.h"
#include "exchange/plan/page_fonts.h"

#include <algorithm>
#include <functional>
#include <ostream>

namespace fenmark::cli {

namespace {

exchange::Plot plotOf(const drawing::Drawing& drawing, const PlotArguments& arguments, Language language) {
    const auto index = [&](const std::string& name) {
        return alignmentNamed(drawing, arguments.drawing, name, language);
    };
    if (arguments.profile) {
        return exchange::plotProfile(drawing, index(*arguments.profile), arguments.options);
    }
    if (arguments.crossSections) {
        return exchange::plotCrossSections(drawing, index(*arguments.crossSections), arguments.options);
    }
    if (arguments.along) {
        return exchange::plotAlong(drawing, index(*arguments.along), arguments.options);
    }
    return exchange::plotPlan(drawing, arguments.options);
}

// "road.svg" and page 3 of 12 give "road-03.svg".
std::string pageName(const std::string& target, std::size_t page, std::size_t pages) {
    if (pages == 1) {
        return target;
    }
    const std::size_t digits = std::to_string(pages).size();
    std::string number = std::to_string(page);
    number.insert(0, digits - std::min(digits, number.size()), '0');
    const std::size_t point = target.rfind('.');
    return target.substr(0, point) + "-" + number + target.substr(point);
}

void write(const Streams& streams, const std::string& target, const std::function<void(std::ostream&)>& function) {
    require(streams, exchange::writeFile(target, function));
}

} // namespace

int runPlot(const PlotArguments& arguments, const Streams& streams) {
    const bool pdf = endsIn(arguments.target, ".pdf");
    if (!pdf && !endsIn(arguments.target, ".svg")) {
        throw Stop(kWrongUsage, otherExtension(streams.language, arguments.target,
                                               ".svg" + said(streams.language, Text::Or) + ".pdf"));
    }
    const auto drawing = readDrawing(arguments.drawing, drawing::Load::Everything, streams, arguments.quiet);
    const exchange::Plot plot = plotOf(*drawing, arguments, streams.language);
    if (plot.failure) {
        throw Stop(kNotDone, arguments.drawing + ": " + exchange::wording(*plot.failure, streams.language));
    }
    const std::size_t files = pdf ? 1 : plot.pages.size();
    for (std::size_t i = 0; i < files; ++i) {
        requireNoSource(*drawing, pageName(arguments.target, i + 1, files), streams.language);
    }
    if (pdf) {
        write(streams, arguments.target, [&](std::ostream& out) {
            const Outcome made = exchange::writePdf(plot, out);
            if (out) { // otherwise the file says why it cannot be written
                require(streams, made, arguments.target + ": ");
            }
        });
    } else {
        for (std::size_t i = 0; i < files; ++i) {
            write(streams, pageName(arguments.target, i + 1, files), [&](std::ostream& out) { out << plot.pages[i]; });
        }
        if (files > 1) {
            const std::string count = std::to_string(files);
            const std::string first = pageName(arguments.target, 1, files);
            const std::string last = pageName(arguments.target, files, files);
            tellNote(streams, arguments.quiet,
                     inLanguage(streams, count + "枚: " + first + " から " + last + " まで",
                                count + " sheets: " + first + " to " + last));
        }
    }
    tellNotes(streams, arguments.quiet, plot.notes);
    if (pdf) {
        tellNotes(streams, arguments.quiet, exchange::notesOfFonts(plot.pages));
    }
    return kDone;
}

} // namespace fenmark::cli
