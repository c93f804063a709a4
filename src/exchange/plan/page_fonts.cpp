// Letters that no font has: those of the pages' texts less those of every font that can be scaled.
#include "exchange/plan/page_fonts.h"

#ifdef FENMARK_PDF

#include <fontconfig/fontconfig.h>
#include <glib.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace fenmark::exchange {

namespace {

constexpr std::size_t kMostLettersNamed = 8;

struct ReleaseFonts {
    void operator()(FcCharSet* letters) const { FcCharSetDestroy(letters); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet* members) const { FcObjectSetDestroy(members); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};
template <typename T>
using OwnedFonts = std::unique_ptr<T, ReleaseFonts>;

bool leavesInk(gunichar letter) {
    return !g_unichar_isspace(letter) && !g_unichar_iscntrl(letter) && !g_unichar_iszerowidth(letter);
}

// What stands between the tags from each <text> to its end. The letters that stand for a reference such as "&amp;" are
// ASCII like its own.
void addLetters(FcCharSet& letters, std::string_view page) {
    std::size_t at = page.find("<text");
    while (at != std::string_view::npos) {
        const std::size_t end = page.find("</text>", at);
        bool tag = true;
        for (std::string_view rest = page.substr(at, end == std::string_view::npos ? end : end - at); !rest.empty();) {
            const gunichar letter = g_utf8_get_char_validated(rest.data(), static_cast<gssize>(rest.size()));
            if (letter == static_cast<gunichar>(-1) || letter == static_cast<gunichar>(-2)) {
                break; // names are made valid where a drawing is read
            }
            if (letter == '<' || letter == '>') {
                tag = letter == '<';
            } else if (!tag && leavesInk(letter)) {
                FcCharSetAddChar(&letters, letter);
            }
            rest.remove_prefix(static_cast<std::size_t>(g_utf8_next_char(rest.data()) - rest.data()));
        }
        at = end == std::string_view::npos ? end : page.find("<text", end);
    }
}

std::string firstOf(const FcCharSet& letters) {
    std::string first;
    std::size_t named = 0;
    FcChar32 page[FC_CHARSET_MAP_SIZE];
    FcChar32 next = 0;
    for (FcChar32 base = FcCharSetFirstPage(&letters, page, &next);
         base != FC_CHARSET_DONE && named < kMostLettersNamed; base = FcCharSetNextPage(&letters, page, &next)) {
        for (FcChar32 bit = 0; bit < 32 * FC_CHARSET_MAP_SIZE && named < kMostLettersNamed; ++bit) {
            if ((page[bit / 32] >> (bit % 32) & 1U) != 0) {
                char utf8[6];
                first.append(utf8, static_cast<std::size_t>(g_unichar_to_utf8(base + bit, utf8)));
                ++named;
            }
        }
    }
    return first;
}

} // namespace

Notes notesOfFonts(const std::vector<std::string>& pages) {
    OwnedFonts<FcCharSet> missing(FcCharSetCreate());
    const OwnedFonts<FcPattern> scalable(FcPatternCreate());
    const OwnedFonts<FcObjectSet> members(FcObjectSetBuild(FC_CHARSET, nullptr));
    if (!missing || !scalable || !members || FcPatternAddBool(scalable.get(), FC_SCALABLE, FcTrue) == FcFalse) {
        return {};
    }
    for (const std::string& page : pages) {
        addLetters(*missing, page);
    }
    const OwnedFonts<FcFontSet> fonts(FcFontList(nullptr, scalable.get(), members.get()));
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcCharSet* has = nullptr;
        if (FcPatternGetCharSet(fonts->fonts[i], FC_CHARSET, 0, &has) == FcResultMatch) {
            missing.reset(FcCharSetSubtract(missing.get(), has));
            if (!missing) {
                return {};
            }
        }
    }
    const std::size_t count = FcCharSetCount(missing.get());
    if (count == 0) {
        return {};
    }
    Note note{NoteCode::LettersWithoutFont, count};
    note.letters = firstOf(*missing);
    return {note};
}

} // namespace fenmark::exchange

#else

namespace fenmark::exchange {

Notes notesOfFonts(const std::vector<std::string>&) {
    return {};
}

} // namespace fenmark::exchange

#endif
