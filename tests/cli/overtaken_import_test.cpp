// Imports into a drawing that another program changes, or makes, before they can save.
#include "cli/cli.h"
#include "command_line.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::cli {
namespace {

// Does something whenever a text was written to it: here what another program does meanwhile.
class Watched : public std::stringbuf {
  public:
    Watched(std::string text, std::function<void()> meanwhile)
        : text_(std::move(text)), meanwhile_(std::move(meanwhile)) {}

  protected:
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        const std::streamsize written = std::stringbuf::xsputn(text, length);
        if (const std::size_t found = str().find(text_, seen_); found != std::string::npos) {
            seen_ = found + text_.size();
            meanwhile_();
        }
        return written;
    }

  private:
    std::string text_;
    std::function<void()> meanwhile_;
    std::size_t seen_ = 0;
};

// Results without an alignment in their file are told of while the import is at work.
class OvertakenImport : public CommandLine {
  protected:
    // The drawing as others leave it: with an alignment, and with so many points of theirs.
    std::string left(std::size_t imports) {
        const std::string drawing = folder.at("left" + std::to_string(imports) + ".gpkg");
        std::vector<std::string> line = {"import", file(std::string(kPoints) + kRoute, "road.sim")};
        for (std::size_t i = 0; i < imports; ++i) {
            line.push_back(file("A00,\r\nA01,1,P,5,5,,\r\nA99,\r\n", "other" + std::to_string(i) + ".sim"));
        }
        line.insert(line.end(), {"--drawing", drawing, "--quiet"});
        EXPECT_EQ(fenmark(line).code, kDone);
        return drawing;
    }
    // Imports into a drawing of which another program makes one state after the other, one for each attempt.
    Ran importWhile(std::vector<std::string> states) const {
        std::size_t done = 0;
        Watched watched("results have no alignment", [&] {
            if (done < states.size()) {
                std::filesystem::rename(states[done++], folder.at("d.gpkg"));
            }
        });
        std::ostream err(&watched);
        std::ostringstream out;
        const int code =
            run({"import", file(std::string(kPoints) + kLongitudinal), "--json", "--drawing", folder.at("d.gpkg")},
                {out, err, false, nullptr, 0, nullptr, Language::English});
        EXPECT_EQ(done, states.size());
        return {code, out.str(), watched.str()};
    }
};

TEST_F(OvertakenImport, IsDoneAnewOnWhatTheOthersLeftUpToFiveTimes) {
    for (std::size_t others = 0; others <= 5; ++others) {
        std::vector<std::string> states;
        for (std::size_t i = 1; i <= others; ++i) {
            states.push_back(left(i));
        }
        std::filesystem::rename(left(0), folder.at("d.gpkg"));
        const Ran ran = importWhile(states);
        ASSERT_EQ(ran.json().size(), 1U);
        const nlohmann::json json = ran.json()[0];
        const nlohmann::json inDrawing = info(folder.at("d.gpkg"));
        const bool given = others < 5;
        EXPECT_EQ(ran.code, given ? kDone : kNotDone) << others;
        EXPECT_EQ(contains(ran.err, "was changed by another program since it was opened"), !given) << ran.err;
        EXPECT_EQ(json["failure"].is_null(), given) << json.dump();
        const std::string notes = json["notes"].dump();
        EXPECT_EQ(notes.find("no-alignment") != std::string::npos, given) << notes;
        EXPECT_EQ(notes.find("no-alignment"), notes.rfind("no-alignment")) << "of the last attempt alone: " << notes;
        EXPECT_EQ(inDrawing["entities"].size(), 2 + others + (given ? 2U : 0U)) << others;
    }
}

TEST_F(OvertakenImport, WhoseLogCannotTakeItsNameStillSaysWhatItRefused) {
    const std::string drawing = left(0);
    Watched watched("results have no alignment", [&] { std::filesystem::create_directory(folder.at("a_Input.log")); });
    std::ostream err(&watched);
    std::ostringstream out;
    const int code = run({"import", file(std::string(kPoints) + kLongitudinal + "D00,1,lot,9,\r\nB01,1,,\r\nD99,\r\n"),
                          "--drawing", drawing},
                         {out, err, false, nullptr, 0, nullptr, Language::English});
    EXPECT_EQ(code, kNotDone);
    EXPECT_TRUE(contains(watched.str(), "a.sim:8: ErrD00-2")) << watched.str();
    EXPECT_TRUE(contains(watched.str(), "the import is in " + drawing)) << watched.str();
    EXPECT_EQ(info(drawing)["entities"].size(), 5U) << "two points were there; two and a lot came";
}

} // namespace
} // namespace fenmark::cli
