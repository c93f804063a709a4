// fenmark stakes: points to set out along an alignment.
#include "exchange/stakes.h"

#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"
#include "exchange/output_file.h"

#include <ostream>

namespace fenmark::cli {

int runStakes(const StakesArguments& arguments, const Streams& streams) {
    const auto drawing = readDrawing(arguments.drawing, drawing::Load::WithoutEntities, streams);
    const std::size_t index = alignmentNamed(*drawing, arguments.drawing, arguments.alignment, streams.language);
    const exchange::Stakes stakes = exchange::stakesOf(*drawing, index, arguments.options);
    if (stakes.failure) {
        throw Stop(kNotDone, arguments.alignment + ": " + exchange::wording(*stakes.failure, streams.language));
    }
    if (stakes.note) {
        tellNote(streams, false, arguments.alignment + ": " + exchange::wording(*stakes.note, streams.language));
    }
    if (!arguments.target || *arguments.target == "-") { // as other commands know standard output
        exchange::writeStakes(stakes, arguments.format, streams.out);
        return kDone;
    }
    requireNoSource(*drawing, *arguments.target, streams.language);
    require(streams, exchange::writeFile(*arguments.target, [&](std::ostream& out) {
                exchange::writeStakes(stakes, arguments.format, out);
            }));
    return kDone;
}

} // namespace fenmark::cli
