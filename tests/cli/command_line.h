// Runs fenmark in the process of the test, in a folder of its own.
#pragma once

#include "cli/cli.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::cli {

inline bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

struct Ran {
    int code = -1;
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

class CommandLine : public ::testing::Test {
  protected:
    static Ran fenmark(const std::vector<std::string>& arguments, bool terminal = false,
                       Language language = Language::English) {
        std::ostringstream out;
        std::ostringstream err;
        const int code = run(arguments, {out, err, terminal, nullptr, 0, nullptr, language});
        return {code, out.str(), err.str()};
    }
    static Ran inJapanese(const std::vector<std::string>& arguments) {
        return fenmark(arguments, false, Language::Japanese);
    }
    std::string file(std::string_view content, std::string_view name = "a.sim") const {
        return folder.write(name, content);
    }
    // A copy of an example, so that log and drawing stand in the test's folder.
    std::string example(const std::string& name) const {
        const std::string copy = folder.at(name);
        std::filesystem::copy_file(std::string(FENMARK_SOURCE_DIR) + "/examples/" + name, copy);
        return copy;
    }
    nlohmann::json info(const std::string& drawing) const { return fenmark({"info", drawing, "--json"}).json(); }

    test::TemporaryFolder folder;
};

inline constexpr const char* kPoints = "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n";
inline constexpr const char* kRoute = "F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
inline constexpr const char* kLongitudinal = "H00,1,CL,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n";
inline constexpr const char* kTooShortArc = "F00,1,1,CL,3,\r\nB01,1,BP,\r\nC01,0,\r\nC01\r\nB01,2,EP,\r\nF99,\r\n";

} // namespace fenmark::cli
