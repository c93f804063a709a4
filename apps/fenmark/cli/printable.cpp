// Streams that reach a terminal: no name, path or text of a file sends it a control sequence.
#include "cli/printable.h"

namespace fenmark::cli {

namespace {

constexpr unsigned char kLeadOfC1 = 0xC2; // U+0080 to U+00BF in UTF-8

bool isPlain(unsigned char byte) {
    return (byte >= 0x20 && byte != 0x7F && byte != kLeadOfC1) || byte == '\n' || byte == '\t';
}

} // namespace

bool PrintableBuffer::put(std::string_view text) {
    return target_.sputn(text.data(), static_cast<std::streamsize>(text.size())) ==
           static_cast<std::streamsize>(text.size());
}

bool PrintableBuffer::escape(unsigned char control) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const char text[] = {'\\', 'u', '0', '0', kDigits[control >> 4U], kDigits[control & 0xFU]};
    return put({text, sizeof text});
}

std::streamsize PrintableBuffer::xsputn(const char* text, std::streamsize size) {
    const std::string_view all(text, static_cast<std::size_t>(size));
    bool good = true;
    std::size_t plain = 0; // first byte that was not yet passed on
    for (std::size_t i = 0; i < all.size() && good; ++i) {
        const auto byte = static_cast<unsigned char>(all[i]);
        if (leadSeen_) {
            leadSeen_ = false;
            plain = i;
            if (byte >= 0x80 && byte <= 0x9F) {
                good = escape(byte);
                plain = i + 1;
                continue;
            }
            good = put({"\xC2", 1});
        }
        if (isPlain(byte)) {
            continue;
        }
        good = good && put(all.substr(plain, i - plain));
        plain = i + 1;
        leadSeen_ = byte == kLeadOfC1;
        good = good && (leadSeen_ || escape(byte));
    }
    return good && put(all.substr(plain)) ? size : 0;
}

PrintableBuffer::int_type PrintableBuffer::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) {
        return traits_type::not_eof(c);
    }
    const char byte = traits_type::to_char_type(c);
    return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
}

int PrintableBuffer::sync() {
    return target_.pubsync();
}

PrintableStream::PrintableStream(std::ostream& target)
    : std::ostream(nullptr), target_(target), buffer_(*target.rdbuf()) {
    rdbuf(&buffer_);
    if ((target.flags() & std::ios::unitbuf) != 0) {
        *this << std::unitbuf;
    }
    if (!target) {
        setstate(target.rdstate());
    }
}

PrintableStream::~PrintableStream() {
    if (bad()) {
        target_.setstate(std::ios::badbit);
    }
}

std::string oneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (c == '\n') {
            line += "\\u000a";
        } else {
            line += c;
        }
    }
    return line;
}

} // namespace fenmark::cli
