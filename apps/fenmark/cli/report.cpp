// fenmark report: survey documents of a drawing.
#include "exchange/report/report.h"

#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/messages.h"
#include "command/dialogs.h"
#include "exchange/output_file.h"
#include "platform/files.h"
#include "sima/text/cp932.h"
#include "sima/text/path.h"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>

namespace fenmark::cli {

namespace {

// A log of a million error blocks has some 300 MB.
constexpr std::uint64_t kLargestLog = std::uint64_t{1} << 30;

std::string_view withoutLineEnd(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

// The error blocks of a log: a line that begins with the code, and under it the record.
std::vector<exchange::LogError> errorsIn(const std::string& path, const std::string& name, Language language) {
    const auto cannotRead = [&](const std::error_code& why) {
        return Stop(kNotDone, said(language, Text::CannotRead, {{"path", path}, {"reason", reasonOf(why, language)}}));
    };
    // Reading a pipe would wait, and a device need not end.
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Folder || state.kind == platform::PathKind::Other) {
        throw Stop(kNotDone, said(language, Text::IsNoOrdinaryFile, {{"path", path}}));
    }
    if (state.size > kLargestLog) {
        throw cannotRead(std::make_error_code(std::errc::file_too_large));
    }
    errno = 0;
    std::ifstream file(sima::pathOf(path), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad()) {
        throw cannotRead({errno != 0 ? errno : EIO, std::generic_category()});
    }
    std::string text;
    sima::decodeCp932(text, bytes);
    std::vector<exchange::LogError> errors;
    bool behind = false; // the line before was an error's text
    bool counted = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string_view line = withoutLineEnd(std::string_view(text).substr(at, end - at));
        at = end + 1;
        if (line.starts_with("Err") && line.find(' ') != std::string_view::npos) {
            errors.push_back({name, std::string(line), ""});
            behind = true;
        } else if (behind) {
            errors.back().record = line;
            behind = false;
        } else {
            counted = counted || line == command::kNoErrors || line.ends_with(command::kErrorsCounted);
        }
    }
    if (!counted) { // else a file that was named by mistake would tell of no error
        throw Stop(kNotDone, said(language, Text::IsNoLog, {{"path", path}}));
    }
    return errors;
}

} // namespace

int runReport(const ReportArguments& arguments, const Streams& streams) {
    const bool html = endsIn(arguments.target, ".html") || endsIn(arguments.target, ".htm");
    if (!html && !endsIn(arguments.target, ".csv")) {
        throw Stop(kWrongUsage, otherExtension(streams.language, arguments.target,
                                               ".html" + said(streams.language, Text::Or) + ".csv"));
    }
    exchange::ReportOptions options = arguments.options;
    for (const std::string& log : arguments.logs) {
        const std::string name = sima::textOfPath(log.substr(sima::fileNameStart(log)));
        options.logs.push_back(name);
        std::vector<exchange::LogError> errors = errorsIn(log, name, streams.language);
        options.errors.insert(options.errors.end(), std::make_move_iterator(errors.begin()),
                              std::make_move_iterator(errors.end()));
    }
    const auto drawing = readDrawing(arguments.drawing, drawing::Load::Everything, streams, arguments.quiet);
    requireNoSource(*drawing, arguments.target, streams.language);
    exchange::Notes notes;
    require(streams, exchange::writeFile(arguments.target, [&](std::ostream& out) {
                notes = exchange::writeReport(*drawing, options,
                                              html ? exchange::ReportFormat::Html : exchange::ReportFormat::Csv, out);
            }));
    tellNotes(streams, arguments.quiet, notes);
    return kDone;
}

} // namespace fenmark::cli
