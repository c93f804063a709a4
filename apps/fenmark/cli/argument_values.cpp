// Reads the values of options: numbers, lists, encodings, paths.
#include "cli/argument_values.h"

#include "exchange/station_text.h"
#include "platform/paths.h"
#include "sima/text/encoding.h"

#include <algorithm>
#include <utility>

namespace fenmark::cli {

void refuse(Language language, Text text, std::initializer_list<Figure> figures) {
    throw WrongUsage(said(language, text, figures));
}

std::vector<std::string> listed(const std::string& list) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        pieces.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return pieces;
}

std::string withBlanks(std::span<const std::string> words) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : " ").append(word);
    }
    return text;
}

double metresIn(const std::string& text, const char* what, Language language) {
    if (const std::optional<double> value = exchange::parseReal(text)) {
        return *value;
    }
    refuse(language, Text::NotMetres, {{"what", what}, {"text", text}});
}

std::optional<sima::Encoding> encodingNamed(const std::string& name, Language language) {
    if (name == "auto") {
        return std::nullopt;
    }
    if (const std::optional<sima::Encoding> encoding = sima::encodingNamed(name)) {
        return encoding;
    }
    refuse(language, Text::NoEncoding, {{"name", name}});
}

void requireName(const std::string& name, const char* what, Language language) {
    if (name.empty()) {
        refuse(language, Text::EmptyName, {{"what", what}});
    }
}

std::string refusalOfEmpty(const std::string& value) {
    return value.empty() ? "empty" : "";
}

void takeTyped(std::string& path) {
    path = platform::typedPath(std::move(path));
}

void takeTyped(std::optional<std::string>& path) {
    if (path) {
        takeTyped(*path);
    }
}

void takeTyped(std::vector<std::string>& paths) {
    for (std::string& path : paths) {
        takeTyped(path);
    }
}

} // namespace fenmark::cli
