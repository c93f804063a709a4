// docs/exports.txt lists what the headers declare, no more and no less; the library's symbols are compared with it too.
#include "support_alignment.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

std::set<std::string> listed() {
    std::ifstream file(FENMARK_SOURCE_DIR "/docs/exports.txt");
    std::set<std::string> names;
    std::string line;
    while (std::getline(file, line)) {
        names.insert(line);
    }
    return names;
}

std::set<std::string> declared() {
    std::set<std::string> names;
    for (const char* folder : {"/include/fenmark/alignment", "/include/fenmark/curve"}) {
        for (const auto& entry : std::filesystem::directory_iterator(std::string(FENMARK_SOURCE_DIR) + folder)) {
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const std::string header = text.str();
            // A declaration starts with the macro on a line of its own; its name is the word before the first bracket.
            const std::string macro = "\nFENMARK_ALIGNMENT_API ";
            for (std::size_t at = header.find(macro); at != std::string::npos; at = header.find(macro, at + 1)) {
                const std::size_t bracket = header.find('(', at);
                const std::size_t before = header.find_last_of(" *\n", bracket - 1);
                names.insert(header.substr(before + 1, bracket - before - 1));
            }
        }
    }
    return names;
}

} // namespace

TEST(Exports, TheListIsWhatTheHeadersDeclare) {
    const auto in_list = listed();
    const auto in_headers = declared();
    EXPECT_GT(in_headers.size(), 100u);
    for (const std::string& name : in_headers) {
        EXPECT_TRUE(in_list.contains(name)) << name << " is declared and not in docs/exports.txt";
    }
    for (const std::string& name : in_list) {
        EXPECT_TRUE(in_headers.contains(name)) << name << " is in docs/exports.txt and not declared";
    }
}
