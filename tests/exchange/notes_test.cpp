// The notes and their texts.
#include "exchange/notes.h"

#include "support/sample_file.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace fenmark::exchange {
namespace {

constexpr std::array kLanguages = {Language::Japanese, Language::English};

std::vector<NoteCode> codes() {
    std::vector<NoteCode> all;
    for (std::size_t i = 0; i < kNoteCodes; ++i) {
        all.push_back(static_cast<NoteCode>(i));
    }
    return all;
}

bool hasKana(std::string_view text) {
    return text.find("\xE3\x81") != std::string_view::npos || text.find("\xE3\x82") != std::string_view::npos;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The members of a note that its text shows: changing one of them changes the text.
std::string membersIn(NoteCode code, Language language) {
    const auto shows = [&](auto&& change) {
        Note note{code};
        change(note);
        return wording(note, language) != wording({code}, language);
    };
    std::string members;
    members += shows([](Note& note) { note.count = 11; }) ? "count " : "";
    members += shows([](Note& note) { note.polylines = 12; }) ? "polylines " : "";
    members += shows([](Note& note) { note.alignments = 13; }) ? "alignments " : "";
    members += shows([](Note& note) { note.became = Fate::KeptUnseen; }) ? "became " : "";
    members += shows([](Note& note) { note.metres = 20.5; }) ? "metres " : "";
    members += shows([](Note& note) { note.from = 21.5; }) ? "from " : "";
    members += shows([](Note& note) { note.to = 22.5; }) ? "to " : "";
    members += shows([](Note& note) { note.letters = "\u9F98"; }) ? "letters " : "";
    return members;
}

TEST(Obstacles, EveryCodeHasItsTextInBothLanguages) {
    const auto shows = [](ObstacleCode code, Language language, auto&& change) {
        Obstacle obstacle{code};
        change(obstacle);
        return wording(obstacle, language) != wording({code}, language);
    };
    std::set<std::string_view> names;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kLastObstacleCode); ++i) {
        const auto code = static_cast<ObstacleCode>(i);
        EXPECT_TRUE(names.insert(obstacleName(code)).second) << obstacleName(code) << " is another code's name too";
        EXPECT_TRUE(hasKana(wording({code}, Language::Japanese))) << obstacleName(code);
        EXPECT_TRUE(isAscii(wording({code}, Language::English))) << obstacleName(code);
        for (auto change : {+[](Obstacle& o) { o.count = 11; }, +[](Obstacle& o) { o.paper = "A9"; },
                            +[](Obstacle& o) { o.scale = 12; }, +[](Obstacle& o) { o.station = 13.5; },
                            +[](Obstacle& o) { o.from = 14.5; }, +[](Obstacle& o) { o.to = 15.5; }}) {
            EXPECT_EQ(shows(code, Language::Japanese, change), shows(code, Language::English, change))
                << obstacleName(code);
        }
    }
    EXPECT_TRUE(isWantOfRoom({ObstacleCode::TooManySheets}));
    EXPECT_FALSE(isWantOfRoom({ObstacleCode::TooManyPages}));
}

// Every text with figures in it, in both languages, as users read it.
TEST(Notes, TextsAreThoseOfTheSample) {
    std::string all;
    for (const NoteCode code : codes()) {
        const Note note{code, 123456, 234567, 345678, Fate::LeftOut, 12.5, 1000.125, 2000.25, "\u9F98"};
        all += std::string(noteName(code)) + '\n' + english(note) + '\n' + japanese(note) + '\n';
    }
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kLastObstacleCode); ++i) {
        Obstacle obstacle{static_cast<ObstacleCode>(i)};
        obstacle.count = 123456;
        obstacle.paper = "A3";
        obstacle.scale = 500;
        obstacle.station = 1000.125;
        obstacle.from = 12.5;
        obstacle.to = 2000.25;
        all += std::string(obstacleName(obstacle.code)) + '\n' + wording(obstacle, Language::English) + '\n' +
               wording(obstacle, Language::Japanese) + '\n';
    }
    expectSample("notes.txt", all);
}

// Words that go with a number of things are those of one thing.
TEST(Notes, OfOneThingAreThoseOfTheSample) {
    std::string all;
    for (const NoteCode code : codes()) {
        const Note note{code, 1, 1, 1, Fate::LeftOut, 12.5, 1000.125, 2000.25, "\u9F98"};
        all += english(note) + '\n';
    }
    expectSample("notes_of_one.txt", all);
}

TEST(Notes, EveryCodeHasItsTextInBothLanguages) {
    std::set<std::string_view> names;
    for (const NoteCode code : codes()) {
        EXPECT_TRUE(names.insert(noteName(code)).second) << noteName(code) << " is another code's name too";
        EXPECT_TRUE(hasKana(japanese({code}))) << noteName(code);
        EXPECT_TRUE(isAscii(english({code}))) << noteName(code);
    }
    EXPECT_EQ(names.size(), kNoteCodes);
}

TEST(Notes, BothLanguagesShowTheSameFiguresToTheDigit) {
    for (const NoteCode code : codes()) {
        EXPECT_EQ(membersIn(code, Language::Japanese), membersIn(code, Language::English)) << noteName(code);
        const Note note{code, 123456, 234567, 345678, Fate::LeftOut, 12.5, 1000.125, 2000.25, "\u9F98"};
        for (const Language language : kLanguages) {
            const std::string text = wording(note, language);
            EXPECT_EQ(text.find_first_of("{}"), std::string::npos) << text;
            const std::string members = membersIn(code, language);
            const auto has = [&](std::string_view member, std::string_view figure) {
                return (members.find(member) != std::string::npos) == (text.find(figure) != std::string::npos);
            };
            EXPECT_TRUE(has("count", "123456")) << text;
            EXPECT_TRUE(has("polylines", "234567")) << text;
            EXPECT_TRUE(has("alignments", "345678")) << text;
            EXPECT_TRUE(has("metres", "12.5 m")) << text;
            EXPECT_TRUE(has("from", "1000.125")) << text;
            EXPECT_TRUE(has("to ", "2000.250")) << text;
            EXPECT_TRUE(has("letters", "\u9F98")) << text;
        }
    }
}

// What each code is declared to carry, so that no text forgets a figure.
TEST(Notes, EveryFigureOfANoteStandsInItsText) {
    for (const NoteCode code : codes()) {
        std::string figures = "count ";
        switch (code) {
        case NoteCode::NoPlace:
            figures = "count polylines alignments became ";
            break;
        case NoteCode::BeyondProjection:
        case NoteCode::UnplacedResults:
            figures = "count became ";
            break;
        case NoteCode::PointsAlone:
        case NoteCode::WithoutLine:
            figures = "polylines alignments ";
            break;
        case NoteCode::AlignmentsAlone:
            figures = "count polylines ";
            break;
        case NoteCode::StationsEvery:
            figures = "metres ";
            break;
        case NoteCode::NoStakeInRange:
            figures = "metres from to ";
            break;
        case NoteCode::LettersWithoutFont:
            figures = "count letters ";
            break;
        case NoteCode::NothingSelected:
        case NoteCode::NothingReported:
        case NoteCode::NoZone:
        case NoteCode::RenumberedResults:
        case NoteCode::NoStakeWanted:
            figures = "";
            break;
        default:
            break;
        }
        EXPECT_EQ(membersIn(code, Language::English), figures) << noteName(code);
    }
}

TEST(Notes, EveryFateHasItsWordsInBothLanguages) {
    for (const Language language : kLanguages) {
        std::set<std::string> texts;
        for (std::size_t i = 0; i <= static_cast<std::size_t>(kLastFate); ++i) {
            texts.insert(wording({NoteCode::NoPlace, 1, 2, 3, static_cast<Fate>(i)}, language));
        }
        EXPECT_EQ(texts.size(), static_cast<std::size_t>(kLastFate) + 1);
    }
}

TEST(Notes, ReadAsTheyAreTold) {
    const Note note{NoteCode::NoPlace, 3, 2, 1, Fate::WithoutGeometry};
    EXPECT_EQ(english(note),
              "coordinates beyond all bounds; written without geometry: 3 points, 2 polylines, 1 alignment");
    EXPECT_EQ(japanese(note), "座標が大きすぎる点3点、線2本、線形1本: 図形なしで出力しました");
}

} // namespace
} // namespace fenmark::exchange
