// Lines into fields.
#include "sima/text/splitter.h"

#include "sima/text/number.h"
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
    while (found != kNone && found + 1 < text.size() && text[found + 1] == kQuote)
        found = text.find(kQuote, found + 2);
    return found;
}

// With each doubled quote replaced by one. Storage must have room, so that views into it stay.
std::string_view undouble(std::string_view text, std::string& storage) {
    if (text.find(kQuote) == kNone)
        return text;
    const std::size_t start = storage.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        storage += text[i];
        if (text[i] == kQuote)
            ++i; // the second one of the pair
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
                if (at_ < line_.size())
                    at_ += characterLength(line_, at_);
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
        if (!searched_ || (separatorAt_ != kNone && separatorAt_ < at_))
            separatorAt_ = line_.find(separator_, at_);
        searched_ = true;
        return separatorAt_ != kNone;
    }

    // A field that is a text of its own.
    std::string_view unquote(std::string_view field) {
        std::string_view inner = trim(field);
        if (inner.empty())
            return {};
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
    throw std::invalid_argument("the record has too few fields");
}

// A field of a line without quotes: the text as it is, but nothing for a field of blanks.
inline void Fields::addPlain(const char* from, const char* to) {
    std::string_view field(from, static_cast<std::size_t>(to - from));
    if (!field.empty() && isBlank(field.front()) && trim(field).empty())
        field = {};
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
    for (const char* p = start; p != end; ++p)
        if (*p == separator.front()) {
            fields.addPlain(start, p);
            start = p + 1;
        }
    fields.addPlain(start, end);
    return static_cast<std::int32_t>(fields.size());
}

bool splitAsciiLine(std::string_view line, Fields& fields) {
    fields.count_ = 0;
    const char* start = line.data();
    const char* p = start;
    const char* const end = start + line.size();
#ifdef __SSE2__
    // Sixteen bytes at a time: one bit for each comma, and the end of this loop for what is out of the ordinary.
    const __m128i commas = _mm_set1_epi8(',');
    const __m128i quotes = _mm_set1_epi8(kQuote);
    for (; end - p >= 16; p += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        if (_mm_movemask_epi8(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, quotes))) != 0)
            break;
        auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, commas)));
        for (; found != 0; found &= found - 1) {
            const char* const comma = p + std::countr_zero(found);
            fields.addPlain(start, comma);
            start = comma + 1;
        }
    }
#endif
    for (; p != end; ++p) {
        if (*p == ',') {
            fields.addPlain(start, p);
            start = p + 1;
        } else if (*p == kQuote || static_cast<unsigned char>(*p) >= 0x80) {
            if (!isAscii(line))
                return false;
            splitLine(line, ",", fields);
            return true;
        }
    }
    fields.addPlain(start, end);
    return true;
}

std::int32_t ExtendedCString::Splitter(Array<std::string>& fields, std::string_view text, std::string_view separator) {
    std::int32_t appended = 0;
    const auto append = [&](std::string_view piece) {
        fields.emplace_back(piece);
        ++appended;
    };
    if (!separator.empty())
        for (std::size_t found = text.find(separator); found != std::string_view::npos; found = text.find(separator)) {
            append(text.substr(0, found));
            text.remove_prefix(found + separator.size());
        }
    if (!text.empty())
        append(text);
    return appended;
}

} // namespace fenmark::sima
