// What the page calls: one command line at a time, upon the files in the browser's memory.
#include "cli/cli.h"
#include "platform/process.h"

#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include <emscripten.h>

// Passes a piece of the error stream, which carries notes and the progress bar, to the page at once.
EM_JS(void, passText, (const char* text, int size), {
    if (Module["onFenmarkText"]) {
        Module["onFenmarkText"](HEAPU8.slice(text, text + size));
    }
})

namespace {

class PageBuffer : public std::streambuf {
  protected:
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            text_ += traits_type::to_char_type(c);
        }
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        text_.append(text, static_cast<std::size_t>(size));
        return size;
    }
    int sync() override {
        passText(text_.data(), static_cast<int>(text_.size()));
        text_.clear();
        return 0;
    }

  private:
    std::string text_;
};

std::string output;
fenmark::Language language = fenmark::Language::English;

} // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE void fenmark_set_japanese(int japanese);
EMSCRIPTEN_KEEPALIVE int fenmark_run(const char* arguments, int size);
EMSCRIPTEN_KEEPALIVE const char* fenmark_output();
EMSCRIPTEN_KEEPALIVE int fenmark_output_size();

// The language of the notes, which is that of the page and not of the browser.
void fenmark_set_japanese(int japanese) {
    language = japanese != 0 ? fenmark::Language::Japanese : fenmark::Language::English;
}

// The arguments, each ended by a zero byte, in that many bytes. Returns the exit code of the command.
int fenmark_run(const char* arguments, int size) {
    fenmark::platform::prepareProcess();
    std::vector<std::string> list;
    for (const char* at = arguments; at < arguments + size; at += list.back().size() + 1) {
        list.emplace_back(at);
    }
    std::ostringstream out;
    PageBuffer buffer;
    std::ostream err(&buffer);
    const int code = fenmark::cli::run(list, {out, err, true, nullptr, 0, nullptr, language});
    err.flush();
    output = std::move(out).str();
    return code;
}

// What the last command wrote to its standard output.
const char* fenmark_output() {
    return output.data();
}

int fenmark_output_size() {
    return static_cast<int>(output.size());
}
}
