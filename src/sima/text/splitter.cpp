// Lines into fields.
#include "sima/text/splitter.h"

#include "sima/text/number.h"
#include "sima/text/short_record.h"
#include "sima/text/utf8.h"

#include <bit>
#include <stdexcept>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace fenmark::sima {

namespace {

constexpr char kQuote = '"';
constexpr std::size_t kNone = std::string_view::npos;

// The place of the first quote from `at` on that is not doubled.
std::size_t closingQuote(std::string_view text, std::size_t at) {
    std::size_t found = text.find(kQuote, at);
    while (found != kNone && found + 1 < text.size() && text[found + 1] == kQuote) {
        found = text.find(kQuote, found + 2);
    }
    return found;
}

// With each doubled quote replaced by one. Storage must have room, so that views into it stay.
std::string_view undouble(std::string_view text, std::string& storage) {
    if (text.find(kQuote) == kNone) {
        return text;
    }
    const std::size_t start = storage.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        storage += text[i];
        if (text[i] == kQuote) {
            ++i; // the second one of the pair
        }
    }
    return std::string_view(storage).substr(start);
}

} // namespace

// One line that holds quotes, while it is split.
//
// Meant as they stand: unquoting drops the first character of a field whatever it is, so a field that holds a quote
// without beginning with one loses its first character and ends at that quote. A field that begins with a quote and
// has no closing one is the whole rest of the line, and the split goes on from that rest's third character. Behind a
// closing quote one character is cut, whatever it is.
class QuotedLine {
  public:
    QuotedLine(std::string_view line, char separator, Fields& fields)
        : line_(line), separator_(separator), fields_(fields) {
        fields_.storage_.clear();
        fields_.storage_.reserve(line.size());
    }

    void split() {
        while (findSeparator()) {
            if (line_[at_] == kQuote) {
                fields_.add(takeQuoted());
                if (at_ < line_.size()) {
                    at_ += characterLength(line_, at_);
                }
            } else {
                fields_.add(unquote(line_.substr(at_, separatorAt_ - at_)));
                at_ = separatorAt_ + 1;
            }
        }
        fields_.add(unquote(line_.substr(at_)));
    }

  private:
    // The next separator from at_ on. The place is kept: a rest of the line may be looked through many times.
    bool findSeparator() {
        if (!searched_ || (separatorAt_ != kNone && separatorAt_ < at_)) {
            separatorAt_ = line_.find(separator_, at_);
        }
        searched_ = true;
        return separatorAt_ != kNone;
    }

    // A field that is a text of its own.
    std::string_view unquote(std::string_view field) {
        std::string_view inner = trim(field);
        if (inner.empty()) {
            return {};
        }
        inner.remove_prefix(characterLength(inner, 0));
        const std::size_t end = closingQuote(inner, 0);
        return end == kNone ? field : undouble(inner.substr(0, end), fields_.storage_);
    }

    // The field of a rest that begins with a quote; at_ goes behind its closing quote, or one character on.
    std::string_view takeQuoted() {
        const std::string_view asItCame = line_.substr(at_);
        line_ = line_.substr(0, at_ + trim(asItCame).size());
        const std::size_t start = at_ + 1;
        const std::size_t end = closingQuoteOfRest();
        if (end == kNone) {
            at_ = start;
            return asItCame;
        }
        at_ = end + 1;
        return undouble(line_.substr(start, end - start), fields_.storage_);
    }

    // closingQuote behind the quote at at_, in a time that adds up to the line's length over all calls: once a search
    // has failed, all later runs of quotes are known to be of even length, and only the run at at_ decides.
    std::size_t closingQuoteOfRest() {
        if (!onlyPairsLeft_) {
            const std::size_t found = closingQuote(line_, at_ + 1);
            onlyPairsLeft_ = found == kNone;
            return found;
        }
        if (runEnd_ <= at_) {
            const std::size_t other = line_.find_first_not_of(kQuote, at_);
            runEnd_ = other == kNone ? line_.size() : other;
        }
        return (runEnd_ - at_) % 2 == 0 ? runEnd_ - 1 : kNone;
    }

    std::string_view line_;
    char separator_;
    Fields& fields_;
    std::size_t at_ = 0;
    std::size_t separatorAt_ = 0;
    bool searched_ = false;
    bool onlyPairsLeft_ = false;
    std::size_t runEnd_ = 0;
};

void Fields::refuse() {
    throw ShortRecord();
}

// A field of a line without quotes: the text as it is, but nothing for a field of blanks.
inline void Fields::addPlain(const char* from, const char* to) {
    std::string_view field(from, static_cast<std::size_t>(to - from));
    if (!field.empty() && isBlank(field.front()) && trim(field).empty()) {
        field = {};
    }
    add(field);
}

std::int32_t splitLine(std::string_view line, std::string_view separator, Fields& fields) {
    fields.count_ = 0;
    if (line.find(kQuote) != kNone) {
        QuotedLine(line, separator.front(), fields).split();
        return static_cast<std::int32_t>(fields.size());
    }
    const char* start = line.data();
    const char* const end = start + line.size();
    for (const char* p = start; p != end; ++p) {
        if (*p == separator.front()) {
            fields.addPlain(start, p);
            start = p + 1;
        }
    }
    fields.addPlain(start, end);
    return static_cast<std::int32_t>(fields.size());
}

bool splitAsciiLine(std::string_view line, Fields& fields) {
    if (!isAscii(line)) {
        return false;
    }
    splitLine(line, ",", fields);
    return true;
}

std::size_t splitPlainLine([[maybe_unused]] std::string_view text, [[maybe_unused]] Fields& fields) {
#ifdef __SSE2__
    // Sixteen bytes at a time, with one bit for each of them that is a comma, a line feed or out of the ordinary. What
    // is left at the end of the text goes the long way.
    const __m128i comma = _mm_set1_epi8(',');
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i quote = _mm_set1_epi8(kQuote);
    const auto bits = [](__m128i bytes) { return static_cast<unsigned>(_mm_movemask_epi8(bytes)); };
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* start = begin; // of the field
    fields.count_ = 0;
    for (const char* p = begin; end - p >= 16; p += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const unsigned lineFeeds = bits(_mm_cmpeq_epi8(bytes, lineFeed));
        const unsigned ofThisLine = lineFeeds != 0 ? (lineFeeds & (0U - lineFeeds)) - 1 : 0xFFFFU;
        if ((bits(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, quote))) & ofThisLine) != 0) {
            return 0;
        }
        for (unsigned commas = bits(_mm_cmpeq_epi8(bytes, comma)) & ofThisLine; commas != 0; commas &= commas - 1) {
            const char* const found = p + std::countr_zero(commas);
            fields.addPlain(start, found);
            start = found + 1;
        }
        if (lineFeeds != 0) {
            const char* const lineEnd = p + std::countr_zero(lineFeeds);
            const char* const textEnd = lineEnd != begin && lineEnd[-1] == '\r' ? lineEnd - 1 : lineEnd;
            if (textEnd == begin || isBlank(*begin) || isBlank(textEnd[-1])) {
                return 0;
            }
            fields.addPlain(start, textEnd);
            return static_cast<std::size_t>(lineEnd + 1 - begin);
        }
    }
#endif
    return 0;
}

std::int32_t ExtendedCString::Splitter(Array<std::string>& fields, std::string_view text, std::string_view separator) {
    std::int32_t appended = 0;
    const auto append = [&](std::string_view piece) {
        fields.emplace_back(piece);
        ++appended;
    };
    if (!separator.empty()) {
        for (std::size_t found = text.find(separator); found != std::string_view::npos; found = text.find(separator)) {
            append(text.substr(0, found));
            text.remove_prefix(found + separator.size());
        }
    }
    if (!text.empty()) {
        append(text);
    }
    return appended;
}

} // namespace fenmark::sima
