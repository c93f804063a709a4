// What a manual page says, for tests that compare it with --help.
#pragma once

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace fenmark::test {

// The page with plain hyphens.
inline std::string plainManualPage(const std::string& path) {
    std::ifstream file(path);
    const std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return std::regex_replace(page, std::regex(R"(\\-)"), "-");
}

// All long options that a text names.
inline std::set<std::string> optionsIn(const std::string& text) {
    static const std::regex option("(?:^|[^-a-z])(--[a-z]+(?:-[a-z]+)*)");
    std::set<std::string> options;
    for (std::sregex_iterator at(text.begin(), text.end(), option), end; at != end; ++at) {
        options.insert((*at)[1]);
    }
    return options;
}

} // namespace fenmark::test
