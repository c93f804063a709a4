// What the commands say on standard error, and how they stop.
#include "cli/messages.h"

#include "cli/drawings.h"
#include "cli/error_blocks.h"
#include "cli/options.h"
#include "cli/printable.h"
#include "command/dialog_rules.h"
#include "exchange/formats.h"
#include "host/boundary/mirdan_exception.h"
#include "platform/files.h"
#include "sima/reader/line_source.h"
#include "sima/records/passed_over.h"
#include "sima/text/short_record.h"
#include "sima/text/string_table.h"
#include "sima/text/utf8.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <string_view>
#include <system_error>
#include <utility>

namespace fenmark::cli {

namespace {

constexpr std::size_t kNamesTold = 50;
constexpr std::size_t kCharactersTold = 60;           // of each of them
constexpr std::size_t kBlocksOnTerminal = 100;        // more would push everything else off the screen
constexpr std::size_t kPiece = std::size_t{64} << 10; // bytes: standard error writes each piece at once

// The name, or its beginning and an ellipsis.
std::string cut(std::string_view name) {
    std::string_view rest = name;
    for (std::size_t i = 0; i < kCharactersTold && !rest.empty(); ++i) {
        sima::takeCharacter(rest);
    }
    std::string text(name.substr(0, name.size() - rest.size()));
    return rest.empty() ? text : text + "…";
}

// A longitudinal result that lies outside its alignment is reported at the line that ends its section, so the record
// itself is printed too.
void appendBlock(std::string& text, const std::string& file, const ErrorBlock& block) {
    text.append(file).append(":").append(block.line).append(": ");
    text.append(block.code.empty() ? "error" : block.code).append(": ").append(block.text);
    if (block.text == sima::resourceText(sima::kMessageLongitudinalOutside)) {
        text.append(" ").append(block.record);
    }
    text += '\n';
}

// A kind of lines that were passed over with the code of the record, in the language of the messages.
std::string passedOverText(const std::string& key, Language language) {
    const std::optional<sima::PassedLines> lines = sima::passedLinesOf(key);
    if (!lines) {
        return key;
    }
    std::string text(sima::passedKindText(lines->kind, language));
    return lines->code.empty() ? text : text.append(": ").append(lines->code);
}

} // namespace

void tellError(const Streams& streams, std::string_view text) {
    streams.err << "fenmark: error: " << oneLine(text) << '\n';
}

void tellNote(const Streams& streams, bool quiet, std::string_view text) {
    if (!quiet) {
        streams.err << "fenmark: note: " << oneLine(text) << '\n';
    }
}

void tellNotes(const Streams& streams, bool quiet, const exchange::Notes& notes) {
    for (const exchange::Note& note : notes) {
        tellNote(streams, quiet, exchange::wording(note, streams.language));
    }
}

void tellFileNote(const Streams& streams, bool quiet, const std::string& file, std::string_view code,
                  std::string_view text) {
    if (streams.report != nullptr) {
        streams.report->notes.push_back({std::string(code), std::string(text), {}});
    }
    if (!quiet) {
        streams.err << oneLine(file) << ": note: " << oneLine(text) << '\n';
    }
}

void tellLineNote(const Streams& streams, bool quiet, const std::string& file, std::string_view line,
                  std::string_view code, std::string_view text) {
    if (streams.report != nullptr) {
        streams.report->notes.push_back({std::string(code), std::string(text), std::string(line)});
    }
    if (!quiet) {
        streams.err << oneLine(file) << ':' << line << ": note: " << oneLine(text) << '\n';
    }
}

void tellStoreNotes(const Streams& streams, bool quiet, const std::string& path,
                    const std::vector<drawing::StoreNote>& notes) {
    for (const drawing::StoreNote& note : notes) {
        tellFileNote(streams, quiet, path, drawing::noteName(note.code), drawing::noteText(note, streams.language));
    }
}

std::string inLanguage(const Streams& streams, std::string japanese, std::string english) {
    return streams.language == Language::Japanese ? std::move(japanese) : std::move(english);
}

void tellErrorBlocks(const Streams& streams, const std::string& file, const sima::SimaLog& log) {
    const std::size_t blocks = errorBlockCount(log);
    if (streams.report != nullptr) {
        streams.report->errors.clear();
        streams.report->errors.reserve(blocks);
        for (std::size_t i = 0; i < blocks; ++i) {
            const ErrorBlock block = errorBlock(log, i);
            streams.report->errors.push_back(
                {std::string(block.line), std::string(block.code), std::string(block.text), std::string(block.record)});
        }
    }
    const std::size_t shown = streams.errIsTerminal && blocks > kBlocksOnTerminal ? kBlocksOnTerminal : blocks;
    const std::string name = oneLine(file);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        appendBlock(text, name, errorBlock(log, i));
        if (text.size() >= kPiece || i + 1 == shown) {
            streams.err << text;
            text.clear();
        }
    }
    if (shown < blocks) {
        streams.err << said(streams.language, Text::MoreInLog,
                            {{"path", oneLine(file)}, {"count", std::to_string(blocks - shown)}})
                    << '\n';
    }
}

void tellPassedOver(const Streams& streams, bool quiet, const std::string& file, const sima::PassedOver& lines) {
    for (const auto& [key, count] : lines) {
        const std::string number = std::to_string(count);
        const std::string kind = passedOverText(key, streams.language);
        tellFileNote(streams, quiet, file, "passed-over",
                     inLanguage(streams, number + "行を読み飛ばしました: " + kind,
                                number + (count == 1 ? " line" : " lines") + " passed over, " + kind));
    }
}

void tellDoubts(const Streams& streams, bool quiet, const std::string& file, const sima::Doubts& doubts) {
    for (std::size_t i = 0; i < sima::kDoubts; ++i) {
        const auto doubt = static_cast<sima::Doubt>(i);
        const sima::DoubtfulRecords& records = doubts.of(doubt);
        if (records.count == 0) {
            continue;
        }
        std::string text(sima::doubtText(doubt, streams.language));
        if (records.count > 1) {
            const std::string more = std::to_string(records.count - 1);
            text += inLanguage(streams, "。ほかに" + more + "件", "; " + more + " more");
        }
        tellLineNote(streams, quiet, file, std::to_string(records.firstLine), sima::doubtName(doubt), text);
    }
}

void require(const Streams& streams, const Outcome& outcome, const std::string& before) {
    if (!outcome) {
        throw Stop(kNotDone, before + outcome.in(streams.language));
    }
}

std::string joined(const std::vector<std::string>& names, Language language) {
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kNamesTold); ++i) {
        text.append(i == 0 ? "" : ", ").append(cut(names[i]));
    }
    if (names.size() > kNamesTold) {
        text += said(language, Text::AndMore, {{"count", std::to_string(names.size() - kNamesTold)}});
    }
    return names.empty() ? said(language, Text::None) : text;
}

std::string plainReal(double value) {
    std::array<char, 400> buffer; // the longest plain decimal of a 64-bit real takes some 330 characters
    const auto [end, error] = writePlainReal(buffer.data(), buffer.data() + buffer.size(), value);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string("nan");
}

std::string_view commandThatWrites(const std::string& path) {
    if (endsIn(path, ".html") || endsIn(path, ".htm")) {
        return "report";
    }
    if (endsIn(path, ".pdf")) {
        return "plot";
    }
    const exchange::Format* const format = exchange::formatOf(path);
    return format == nullptr ? "" : format->isPlan ? "plot" : "export";
}

std::string otherExtension(Language language, const std::string& target, const std::string& extensions) {
    const std::string other(commandThatWrites(target));
    const std::string hint =
        other.empty() ? std::string() : said(language, Text::OtherCommandWrites, {{"command", other}});
    return said(language, Text::ExtensionMustBe, {{"path", target}, {"extensions", extensions}, {"hint", hint}});
}

std::string reasonOf(const std::error_code& error, Language language) {
    return platform::wordedReason(error).in(language);
}

void requireReadableSimFile(const std::string& path, Language language) {
    const platform::PathState state = platform::lookUp(path);
    const auto unreadable = [&](const std::error_code& error) {
        return Stop(kNotDone,
                    said(language, Text::CannotRead, {{"path", path}, {"reason", reasonOf(error, language)}}));
    };
    const auto refused = [&](Text text) { return Stop(kNotDone, said(language, text, {{"path", path}})); };
    switch (state.kind) {
    case platform::PathKind::Missing:
    case platform::PathKind::DanglingLink:
        throw unreadable(std::make_error_code(std::errc::no_such_file_or_directory));
    case platform::PathKind::Unknown:
        throw unreadable(state.error);
    case platform::PathKind::Folder:
        throw refused(Text::IsFolder);
    case platform::PathKind::Other: // a pipe or a device would be waited for, and could not be read twice
        throw refused(Text::IsNoOrdinaryFile);
    case platform::PathKind::File:
        break;
    }
    if (!endsIn(path, ".sim")) {
        throw refused(Text::IsNoSimFile);
    }
    if (const std::error_code error = platform::mayRead(path)) {
        throw unreadable(error);
    }
    if (!command::isSimFile(path)) { // the name is right, so the file could not be found again
        throw unreadable(std::make_error_code(std::errc::io_error));
    }
}

void previewFile(sima::SimaReader& reader, const std::string& path, const sima::ReadContext& context,
                 Language language) {
    const auto brokenOff = [&] {
        return PreviewBrokenOff(kNotDone, said(language, Text::ReadingBrokenOff,
                                               {{"path", path},
                                                {"line", std::to_string(reader.lineNumber)},
                                                {"reason", currentExceptionText(language)}}));
    };
    const auto unreadable = [&](const std::error_code& error) {
        return Stop(kNotDone,
                    said(language, Text::CannotRead, {{"path", path}, {"reason", reasonOf(error, language)}}));
    };
    try {
        if (reader.previewScan(path, context) != 0) {
            throw unreadable(reader.openError);
        }
    } catch (const sima::ReadFailure& error) {
        throw unreadable(error.code());
    } catch (const sima::ShortRecord&) {
        throw brokenOff();
    } catch (const sima::LineTooLong&) {
        throw brokenOff();
    }
}

std::string currentExceptionText(Language language) {
    try {
        throw;
    } catch (host::MirdanException* thrown) {
        const std::unique_ptr<host::MirdanException> exception(thrown);
        return exception->message();
    } catch (const std::bad_alloc&) {
        return said(language, Text::OutOfMemory);
    } catch (const sima::ShortRecord&) {
        return said(language, Text::ShortRecord);
    } catch (const sima::LineTooLong&) {
        return said(language, Text::LineTooLong, {{"size", std::to_string(kLongestLine >> 20U)}});
    } catch (const std::exception& exception) {
        return command::brokenOffReason(exception);
    } catch (...) {
        return said(language, Text::UnknownFailure);
    }
}

} // namespace fenmark::cli
