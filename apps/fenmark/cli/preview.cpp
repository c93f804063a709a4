// fenmark preview: the tree of the import dialog with its counts.
#include "cli/commands.h"
#include "cli/file_hints.h"
#include "cli/messages.h"
#include "cli/progress_bar.h"
#include "command/dialog_rules.h"
#include "sima/reader/sima_reader.h"
#include "sima/text/number.h"

#include <ostream>

namespace fenmark::cli {

namespace {

void printTree(std::ostream& out, const sima::SimaImportOptions& options) {
    // Labels end in blanks of their own, which are no use in a list.
    auto cut = [](std::string text) {
        constexpr std::string_view kIdeographicBlank = "\u3000";
        if (text.ends_with(kIdeographicBlank)) {
            text.resize(text.size() - kIdeographicBlank.size());
        }
        while (text.ends_with(' ')) {
            text.pop_back();
        }
        return text;
    };
    out << cut(options.labels.back()) << '\n';
    for (const sima::ImportKind kind : command::kTreeRows) {
        out << (kind == command::kTreeRows.back() ? "└─ " : "├─ ") << cut(command::treeRowText(options, kind)) << '\n';
    }
}

void printJson(std::ostream& out, const sima::SimaReader& reader) {
    out << "{\"coordinates\":" << reader.points.size() << ",\"lots\":" << reader.lotCount()
        << ",\"longitudinal\":" << reader.longitudinalPointCount()
        << ",\"cross_sections\":" << reader.crossSectionCount() << ",\"routes\":[";
    for (std::int32_t type = 1; type <= 7; ++type) {
        out << (type == 1 ? "" : ",") << reader.routesRead(type);
    }
    out << "],\"refers_to_route_types\":[";
    const char* separator = "";
    auto refers = [&](bool used, int type) {
        if (used) {
            out << separator << type;
            separator = ",";
        }
    };
    refers(reader.usedRouteType2, 2);
    refers(reader.usedRouteType3, 3);
    refers(reader.usedRouteType7, 7);
    out << "]}\n";
}

} // namespace

int runPreview(const PreviewArguments& arguments, const Streams& streams) {
    requireReadableSimFile(arguments.file, streams.language);
    ProgressBars bars(streams);
    sima::ReadContext context;
    if (streams.errIsTerminal && !arguments.quiet) {
        context.progress = &bars;
    }
    const FileEncoding encoding = encodingOf(arguments.file, arguments.encoding);
    context.encoding = encoding.encoding;
    context.longestLine = kLongestLine;
    sima::SimaReader reader;
    previewFile(reader, arguments.file, context, streams.language);
    tellLikelyMisreading(streams, arguments.quiet, arguments.file, encoding);
    if (reader.nothingFound()) {
        tellNothingFound(streams, arguments.quiet, arguments.file);
    }
    if (arguments.json) {
        printJson(streams.out, reader);
        return kDone;
    }
    sima::SimaImportOptions options;
    command::countFromPreview(reader, options);
    printTree(streams.out, options);
    return kDone;
}

} // namespace fenmark::cli
