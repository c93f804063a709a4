// The rules of the splitter word by word, on copies and without any thought of speed: what it is compared with.
#pragma once

#include "sima/text/utf8.h"

#include <cstring>
#include <string>
#include <vector>

namespace fenmark::sima_test {

// Takes the blanks at the ends off, drops the first character, and cuts at the first quote that is not doubled.
inline std::string unquotePlainly(std::string& text) {
    const std::string asItCame = text;
    while (!text.empty() && std::strchr("\t\n\v\f\r ", text.front()) != nullptr && text.front() != '\0') {
        text.erase(0, 1);
    }
    while (!text.empty() && std::strchr("\t\n\v\f\r ", text.back()) != nullptr && text.back() != '\0') {
        text.pop_back();
    }
    if (text.empty()) {
        return {};
    }
    text.erase(0, sima::characterLength(text, 0));
    std::size_t quote = text.find('"');
    while (quote != std::string::npos && quote + 1 < text.size() && text[quote + 1] == '"') {
        quote = text.find('"', quote + 2);
    }
    if (quote == std::string::npos) {
        return asItCame;
    }
    std::string field = text.substr(0, quote);
    text = text.substr(quote + 1);
    for (std::size_t i = field.find("\"\""); i != std::string::npos; i = field.find("\"\"", i + 1)) {
        field.erase(i, 1);
    }
    return field;
}

inline std::vector<std::string> splitPlainly(std::string line) {
    std::vector<std::string> fields;
    std::size_t at = line.find(',');
    while (at != std::string::npos) {
        std::string field;
        std::size_t gone = at + 1;
        if (line.front() == '"') {
            field = unquotePlainly(line);
            gone = line.empty() ? 0 : sima::characterLength(line, 0);
        } else if (at > 0) {
            std::string own = line.substr(0, at);
            field = unquotePlainly(own);
        }
        fields.push_back(field);
        line.erase(0, gone);
        at = line.find(',');
    }
    fields.push_back(unquotePlainly(line));
    return fields;
}

} // namespace fenmark::sima_test
