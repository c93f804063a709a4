// How text stands on a terminal: the columns it takes, and where it may break.
#include "cli/terminal_text.h"

#include "sima/text/utf8.h"

#include <algorithm>
#include <array>

namespace fenmark::cli {

namespace {

constexpr std::array<std::string_view, 7> kClosing = {"、", "。", "」", ")", "]", ",", ":"};
constexpr std::array<std::string_view, 3> kOpening = {"「", "(", "["};

bool isAsciiAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]) < 0x80;
}

// What is not broken.
struct Piece {
    std::string text;
    bool behindBlank = false;
};

std::vector<Piece> piecesOf(std::string_view text) {
    std::vector<Piece> pieces;
    bool blank = false;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == ' ') {
            blank = true;
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && text[end] != ' ' && isAsciiAt(text, end)) {
            ++end;
        }
        if (end == at) {
            end += sima::characterLength(text, at);
        }
        const std::string_view piece = text.substr(at, end - at);
        const bool sticks =
            !blank && !pieces.empty() &&
            (std::any_of(kClosing.begin(), kClosing.end(), [&](auto mark) { return piece.starts_with(mark); }) ||
             std::any_of(kOpening.begin(), kOpening.end(),
                         [&](auto mark) { return pieces.back().text.ends_with(mark); }));
        if (sticks) {
            pieces.back().text += piece;
        } else {
            pieces.push_back({std::string(piece), blank});
        }
        blank = false;
        at = end;
    }
    return pieces;
}

} // namespace

std::size_t columnsOf(std::string_view text) {
    std::size_t columns = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        columns += byte < 0x80 ? 1 : byte >= 0xC0 ? 2 : 0;
    }
    return columns;
}

std::vector<std::string> folded(std::string_view text, std::size_t columns) {
    std::vector<std::string> lines(1);
    for (const Piece& piece : piecesOf(text)) {
        std::string& line = lines.back();
        const std::string_view between = piece.behindBlank && !line.empty() ? " " : "";
        if (!line.empty() && columnsOf(line) + between.size() + columnsOf(piece.text) > columns) {
            lines.push_back(piece.text);
        } else {
            line.append(between).append(piece.text);
        }
    }
    return lines;
}

} // namespace fenmark::cli
