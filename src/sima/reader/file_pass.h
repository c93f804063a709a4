// One pass over one file: the line steps that hold wherever a line is read.
#pragma once

#include "sima/reader/line_source.h"
#include "sima/reader/read_context.h"
#include "sima/reader/sima_reader.h"
#include "sima/records/doubts.h"
#include "sima/records/import_options.h"
#include "sima/records/lot_points.h"
#include "sima/records/passed_over.h"
#include "sima/text/number.h"
#include "sima/text/record_code.h"
#include "sima/text/splitter.h"
#include "sima/validators/field_tests.h"
#include "sima/validators/record.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace fenmark::sima {

class FilePass {
  public:
    FilePass(SimaReader& reader, const ReadContext& context)
        : reader_(reader), context_(context), source_(context.encoding, context.longestLine) {}

    // Opens the file and shows the progress window. False if the file cannot be opened.
    bool open(std::string_view path);
    // Closes file and window; the destructor does the same when an exception leaves the pass.
    void close();

    // Reads the next line, shows the position, counts and trims. False at the end of the file.
    bool next();

    // The line read last; all views hold until the next line.
    RecordCode code() const { return code_; } // of field 0, exact
    std::string_view text() const { return text_; }
    const Fields& fields() const { return fields_; }
    Record record() const { return {reader_.lineNumber, fields_, text_}; }

    std::int64_t remainingBytes() const { return source_.length() - source_.position(); }

    SimaReader& reader() { return reader_; }
    SimaLog& log() { return reader_.log; }
    SectionSink* sink() { return context_.sink; }

    // The outlines of the file's lots.
    const std::shared_ptr<LotOutlines>& lotOutlines() { return lotOutlines_; }

    // The reader's counter follows the log's.
    void updateErrorCount() {
        if (reader_.log.errorCount() > reader_.errorCount) {
            reader_.errorCount = reader_.log.errorCount();
        }
    }

    // Counts the line as passed over in silence, with its code.
    void passOver(PassedKind kind);
    // The same for several lines of a kind.
    void countPassedOver(const PassedLines& kind, std::size_t lines);
    // Whether objects are made of the kind. What is not made is not doubtful.
    [[nodiscard]] bool imports(ImportKind kind) const { return reader_.options.flag(kind); }
    // Notes a doubt about the line, or about an earlier one.
    void doubt(Doubt doubt) { reader_.doubts.add(doubt, reader_.lineNumber); }
    void doubt(Doubt doubt, std::int32_t line) { reader_.doubts.add(doubt, line); }
    // Notes what is doubtful about a number's field, which was read as the value.
    void doubtNumber(std::string_view field, double value) {
        if (isReadInPart(field, value)) {
            doubt(Doubt::NumberInPart);
        }
    }
    void doubtNumber(std::string_view field, std::int32_t value) {
        if (value == std::numeric_limits<std::int32_t>::max() && isDigits(field) && toReal(field) > value) {
            doubt(Doubt::NumberTooLarge);
        }
    }

  private:
    bool nextOutOfTheOrdinary();
    void decodeAndSplit(std::string_view bytes);
    void doubtText(std::string_view bytes);

    SimaReader& reader_;
    ReadContext context_;
    LineSource source_;
    std::unique_ptr<Progress> progress_;
    std::shared_ptr<LotOutlines> lotOutlines_ = std::make_shared<LotOutlines>();
    std::string_view text_;
    std::string decoded_;
    Fields fields_;
    RecordCode code_ = kNoCode;
};

} // namespace fenmark::sima
