// What can be said on the command line, and what is answered to anything else.
#include "cli/terminal_text.h"
#include "command_line.h"
#include "exchange/formats.h"

#include <algorithm>
#include <filesystem>

namespace fenmark::cli {
namespace {

using ArgumentLine = CommandLine;

TEST_F(ArgumentLine, VersionIsOneLine) {
    const Ran ran = fenmark({"--version"});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(ran.out.starts_with("fenmark ")) << ran.out;
    EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'), 1);
}

TEST_F(ArgumentLine, HelpOnEveryLevelHasAnExample) {
    const Ran top = fenmark({"--help"});
    EXPECT_EQ(top.code, kDone);
    EXPECT_NE(top.out.find("Example:"), std::string::npos);
    for (const char* command : {"import", "preview", "info", "station", "locate", "export", "plot"}) {
        EXPECT_NE(top.out.find(command), std::string::npos) << command;
        const Ran ran = fenmark({command, "--help"});
        EXPECT_EQ(ran.code, kDone) << command;
        EXPECT_NE(ran.out.find("Example:\n  fenmark " + std::string(command)), std::string::npos) << ran.out;
        EXPECT_EQ(ran.err, "") << command;
    }
}

TEST_F(ArgumentLine, ImportHelpNamesEveryOption) {
    const std::string help = fenmark({"import", "--help"}).out;
    for (const char* option : {"--drawing",
                               "--site",
                               "--only",
                               "--skip",
                               "--point-layer",
                               "--ip-layer",
                               "--lot-layer",
                               "--stake-layer",
                               "--continuous-layer",
                               "--shift",
                               "--alignment",
                               "--force-alignment",
                               "--create-layers",
                               "--zone",
                               "--encoding",
                               "--positive-radius",
                               "--plan-tangents",
                               "--keep-partial",
                               "--strict",
                               "--json",
                               "--quiet"}) {
        EXPECT_NE(help.find(option), std::string::npos) << option;
    }
}

class WrongLine : public CommandLine, public ::testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(WrongLine, IsWrongUsageWithALineThatHelps) {
    const Ran ran = fenmark(GetParam());
    EXPECT_EQ(ran.code, kWrongUsage);
    EXPECT_EQ(ran.out, "");
    EXPECT_TRUE(ran.err.starts_with("fenmark: error: ")) << ran.err;
    EXPECT_NE(ran.err.find("--help"), std::string::npos) << ran.err;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongLine,
    ::testing::Values(std::vector<std::string>{}, std::vector<std::string>{"draw"}, std::vector<std::string>{"import"},
                      std::vector<std::string>{"import", "a.sim", "--no-such-option"},
                      std::vector<std::string>{"import", "a.sim", "--encoding", "latin1"},
                      std::vector<std::string>{"import", "a.sim", "--zone", "nine"},
                      std::vector<std::string>{"preview"}, std::vector<std::string>{"preview", "a.sim", "b.sim"},
                      std::vector<std::string>{"station", "d.gpkg", "CL"},
                      std::vector<std::string>{"station", "d.gpkg", "CL", "twenty"},
                      std::vector<std::string>{"station", "d.gpkg", "CL", "20m"},
                      std::vector<std::string>{"station", "d.gpkg", "CL", "nan"},
                      std::vector<std::string>{"locate", "d.gpkg", "CL", "1"},
                      std::vector<std::string>{"locate", "d.gpkg", "CL", "1", "inf"},
                      std::vector<std::string>{"export", "d.gpkg"}, std::vector<std::string>{"plot", "d.gpkg"}));

TEST_F(ArgumentLine, UnknownCommandIsNamedAndTheCommandsAreListed) {
    EXPECT_TRUE(fenmark({"draw", "a.sim"}).err.starts_with("fenmark: error: there is no command 'draw'; "));
    const std::string none = fenmark({}).err;
    EXPECT_TRUE(none.starts_with("fenmark: error: no command is given; ")) << none;
    EXPECT_NE(none.find("import, preview, info, station, locate, export, plot"), std::string::npos) << none;
}

TEST_F(ArgumentLine, HelpIsACommandToo) {
    EXPECT_EQ(fenmark({"help"}).out, fenmark({"--help"}).out);
    EXPECT_EQ(fenmark({"help", "import"}).out, fenmark({"import", "--help"}).out);
    EXPECT_EQ(fenmark({"help", "import", "--strict=no", "a.sim"}).out, fenmark({"import", "--help"}).out);
    EXPECT_EQ(fenmark({"help", "draw"}).code, kWrongUsage);
}

TEST_F(ArgumentLine, MistypedWordsAreAnsweredWithTheNearestOnes) {
    const auto meant = [](const std::vector<std::string>& line) { return fenmark(line).err; };
    EXPECT_NE(meant({"imprt", "a.sim"}).find("did you mean 'import'?"), std::string::npos);
    EXPECT_NE(meant({"satation"}).find("did you mean 'station'?"), std::string::npos);
    EXPECT_EQ(meant({"draw"}).find("did you mean"), std::string::npos);
    EXPECT_NE(meant({"import", "--hlep"}).find("import has no option --hlep; did you mean '--help'?"),
              std::string::npos);
    EXPECT_NE(meant({"import", "a.sim", "--positive-radus=left"}).find("did you mean '--positive-radius'?"),
              std::string::npos);
    EXPECT_NE(meant({"import", "a.sim", "--only", "pionts"}).find("did you mean 'points'?"), std::string::npos);
    EXPECT_NE(meant({"export", "a.gpkg", "a.dxf", "--only", "lost"}).find("did you mean 'lots'?"), std::string::npos);
    EXPECT_NE(meant({"report", "a.gpkg", "a.csv", "--tables", "sumary"}).find("did you mean 'summary'?"),
              std::string::npos);
    const std::string far = meant({"import", "a.sim", "--no-such-option"});
    EXPECT_NE(far.find("import has no option --no-such-option\n"), std::string::npos) << far;
}

TEST_F(ArgumentLine, OptionThatIsWrongIsNamed) {
    const auto said = [](const std::vector<std::string>& line, const std::string& text) {
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kWrongUsage);
        EXPECT_NE(ran.err.find(text), std::string::npos) << ran.err;
    };
    said({"--hlep"}, "fenmark has no option --hlep; did you mean '--help'?");
    said({"-v"}, "fenmark has no option -v; did you mean '--version'?");
    said({"--zone"}, "--zone stands behind a command that has it (import, export)");
    said({"--zone=9", "import", "a.sim"}, "--zone stands behind a command that has it");
    said({"-q", "import", "a.sim"}, "-q stands behind a command that has it");
    said({"import", "a.sim", "-v"}, "import has no option -v");
    said({"import", "-x"}, "import has no option -x");
    said({"import", "a.sim", "--zone"}, "--zone needs a value: 1..19");
    said({"import", "a.sim", "--encoding"}, "--encoding needs a value: auto|cp932|utf-8|utf-16");
    said({"import", "a.sim", "--only"}, "--only needs a value: KIND,...");
    said({"import", "a.sim", "--positive-radius", "lft"}, "--positive-radius: ");
}

TEST_F(ArgumentLine, DrawingThatIsNamedAsAnotherFormatIsRefusedWithTheCommandsThatWriteIt) {
    const std::string path = file(kPoints, "a.sim");
    const auto refused = [&](const std::string& name, const std::string& command) {
        const Ran ran = fenmark({"import", path, "--drawing", folder.at(name)});
        EXPECT_EQ(ran.code, kWrongUsage);
        EXPECT_NE(ran.err.find("'fenmark import " + path + " --drawing " + folder.at("out.gpkg") +
                               "' and then 'fenmark " + command + " " + folder.at("out.gpkg") + " " + folder.at(name) +
                               "' write that file"),
                  std::string::npos)
            << ran.err;
        EXPECT_FALSE(test::fileExists(folder.at(name)));
        EXPECT_FALSE(test::fileExists(folder.at("a_Input.log")));
    };
    refused("out.dxf", "export");
    refused("out.XML", "export");
    refused("out.svg", "plot");
    refused("out.html", "report");
    refused("out.pdf", "plot");
    EXPECT_NE(fenmark({"export", "a.gpkg", "a.svg"}).err.find("'fenmark plot' writes this one"), std::string::npos);
    EXPECT_NE(fenmark({"plot", "a.gpkg", "a.dxf"}).err.find("'fenmark export' writes this one"), std::string::npos);
    EXPECT_NE(fenmark({"export", "a.gpkg", "a.html"}).err.find("'fenmark report' writes this one"), std::string::npos);
    EXPECT_NE(fenmark({"export", "a.gpkg", "a.PDF"}).err.find("'fenmark plot' writes this one"), std::string::npos);
    EXPECT_NE(fenmark({"report", "a.gpkg", "a.pdf"}).err.find("'fenmark plot' writes this one"), std::string::npos);
    EXPECT_NE(fenmark({"report", "a.gpkg", "a.xml"}).err.find("'fenmark export' writes this one"), std::string::npos);
    EXPECT_EQ(fenmark({"report", "a.gpkg", "a.doc"}).err.find("writes this one"), std::string::npos);
}

TEST_F(ArgumentLine, DrawingThatIsNamedAmongTheFilesIsRefusedWithItsOption) {
    const std::string path = file(kPoints, "a.sim");
    for (const char* name : {"a.gpkg", "new.GPKG"}) {
        const std::string drawing = folder.at(name);
        for (const auto& line : {std::vector<std::string>{"import", path, drawing}, {"import", drawing, path}}) {
            const Ran ran = fenmark(line);
            EXPECT_EQ(ran.code, kWrongUsage);
            EXPECT_NE(ran.err.find("--drawing " + drawing + " imports into it"), std::string::npos) << ran.err;
            EXPECT_FALSE(test::fileExists(folder.at("a.gpkg"))) << "nothing is imported before that";
        }
        EXPECT_EQ(fenmark({"import", path, "--drawing", drawing}).code, kDone);
        std::filesystem::remove(drawing);
    }
}

TEST_F(ArgumentLine, ListsOfKindsTakeOneArgumentAndLeaveTheFilesBehindThem) {
    const std::string first = file(kPoints, "a.sim");
    const std::string second = file(kPoints, "b.sim");
    for (const char* option : {"--only", "--skip"}) {
        const Ran ran = fenmark({"import", option, "lots,ip", first, second});
        EXPECT_EQ(ran.code, kDone) << ran.err;
        EXPECT_NE(ran.out.find(second), std::string::npos) << ran.out;
    }
    EXPECT_EQ(fenmark({"import", first, "--only", "lots", "--only", "points", "--json"}).json()[0]["points"], 2);
}

TEST_F(ArgumentLine, HelpShowsNoConditionsOfTheParser) {
    const std::string help = fenmark({"import", "--help"}).out;
    for (const char* condition : {"INT in", ":{", "... ..."}) {
        EXPECT_EQ(help.find(condition), std::string::npos) << help;
    }
}

TEST_F(ArgumentLine, HelpFitsATerminalOfEightyColumns) {
    for (const char* command : {"import", "preview", "info", "station", "locate", "export", "plot"}) {
        std::istringstream help(fenmark({command, "--help"}).out);
        for (std::string line; std::getline(help, line);) {
            EXPECT_LE(line.size(), 80U) << command << ": " << line;
        }
    }
}

TEST_F(ArgumentLine, HelpHasItsDescriptionsInOneColumn) {
    for (const char* command :
         {"import", "preview", "info", "station", "locate", "export", "plot", "stakes", "report"}) {
        std::istringstream help(fenmark({command, "--help"}).out);
        std::size_t descriptions = 0;
        for (std::string line; std::getline(help, line);) {
            const std::size_t first = line.find_first_not_of(' ');
            if (first == 2 && line.size() > 34 && line[33] == ' ') {
                EXPECT_NE(line[34], ' ') << command << ": " << line;
                ++descriptions;
            } else if (first != std::string::npos && first > 2) {
                EXPECT_EQ(first, 34U) << command << ": " << line;
                ++descriptions;
            }
        }
        EXPECT_GT(descriptions, 2U) << command;
    }
}

TEST_F(ArgumentLine, EmptyNameOfAFileIsWrongUsage) {
    for (const std::vector<std::string>& line : std::vector<std::vector<std::string>>{
             {"import", ""}, {"preview", ""}, {"import", file(kPoints), "--drawing", ""}}) {
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kWrongUsage);
        EXPECT_NE(ran.err.find("is an empty name"), std::string::npos) << ran.err;
    }
}

TEST_F(ArgumentLine, AnEmptyValueIsNotTakenForNone) {
    const std::vector<std::vector<std::string>> lines = {
        {"stakes", "d.gpkg", "CL", "--every", ""},     {"stakes", "d.gpkg", "CL", "--at", ""},
        {"stakes", "d.gpkg", "CL", "--offset", ""},    {"stakes", "d.gpkg", "CL", "--pitch", ""},
        {"export", "d.gpkg", "o.dxf", "--scale", ""},  {"export", "d.gpkg", "o.dxf", "--rectangle", ""},
        {"report", "d.gpkg", "o.csv", "--tables", ""}, {"import", "a.sim", "--shift", ""}};
    for (const std::vector<std::string>& line : lines) {
        const std::string& option = line[line.size() - 2];
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kWrongUsage) << option;
        EXPECT_TRUE(contains(ran.err, option + ": cannot be ''; it takes ")) << ran.err;
        EXPECT_TRUE(contains(inJapanese(line).err, option)) << option;
    }
}

TEST_F(ArgumentLine, ExtensionOfAnExportSaysItsFormatOrIsWrongUsage) {
    for (const char* name : {"out.dwg", "out", "dxf", "out.svg"}) {
        const Ran ran = fenmark({"export", folder.at("d.gpkg"), folder.at(name)});
        EXPECT_EQ(ran.code, kWrongUsage) << name;
        EXPECT_NE(ran.err.find(exchange::extensions(false)), std::string::npos) << ran.err;
    }
    EXPECT_EQ(fenmark({"plot", folder.at("d.gpkg"), folder.at("out.png")}).code, kWrongUsage);
}

TEST_F(ArgumentLine, NegativeNumbersAreNoOptions) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "20", "-5"}).out, "20 5\n");
    for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "05", "95"}) {
        EXPECT_EQ(fenmark({"station", drawing, "CL", "20", std::string("-.") + digit}).out,
                  std::string("20 0.") + digit + "\n");
    }
    EXPECT_EQ(fenmark({"locate", drawing, "CL", "20", "-3.25"}).out, "20 3.25\n");
    EXPECT_EQ(fenmark({"locate", drawing, "CL", "+20", "3.25"}).out, "20 -3.25\n");
}

// Every character of Japanese takes three bytes here and two columns.
bool hasJapanese(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xE3; });
}

constexpr const char* kEveryCommand[] = {"import", "preview", "info",   "station", "locate",
                                         "export", "plot",    "stakes", "report"};

TEST_F(ArgumentLine, HelpIsInTheLanguageOfTheMessages) {
    const std::string top = inJapanese({"--help"}).out;
    for (const char* said :
         {"使い方: fenmark [オプション] コマンド\n", "\nオプション:\n", "\nコマンド:\n", "\n例:\n"}) {
        EXPECT_NE(top.find(said), std::string::npos) << said << top;
    }
    for (const char* command : kEveryCommand) {
        const std::string help = inJapanese({command, "--help"}).out;
        for (const char* english : {"Usage", "Options:", "OPTIONS", "Arguments", "Excludes", "Print", "Example"}) {
            EXPECT_EQ(help.find(english), std::string::npos) << help;
        }
        EXPECT_FALSE(hasJapanese(fenmark({command, "--help"}).out.substr(0, 200))) << command;
        EXPECT_EQ(inJapanese({"help", command}).out, help);
        // Every option and argument has a description, beside it or on the line below.
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("  -") && !hasJapanese(line)) {
                ASSERT_TRUE(std::getline(lines, line));
                EXPECT_TRUE(line.starts_with("      ") && hasJapanese(line)) << line;
            }
        }
    }
}

TEST_F(ArgumentLine, JapaneseHelpFitsATerminalOfEightyColumns) {
    for (const char* command : kEveryCommand) {
        std::istringstream help(inJapanese({command, "--help"}).out);
        for (std::string line; std::getline(help, line);) {
            EXPECT_LE(columnsOf(line), 80U) << command << ": " << line;
            const std::size_t text = std::min(line.find_first_not_of(' '), line.size());
            EXPECT_FALSE(line.substr(text).starts_with("、") || line.substr(text).starts_with("。")) << line;
        }
    }
}

TEST_P(WrongLine, IsRefusedInTheLanguageOfTheMessages) {
    const Ran ran = inJapanese(GetParam());
    EXPECT_EQ(ran.code, kWrongUsage);
    EXPECT_TRUE(ran.err.starts_with("fenmark: error: ")) << ran.err;
    std::istringstream lines(ran.err);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(hasJapanese(line)) << line;
    }
}

TEST_F(ArgumentLine, ErrorsAreInTheLanguageOfTheMessages) {
    const auto said = [](const std::vector<std::string>& line, const std::string& text) {
        const Ran english = fenmark(line);
        const Ran ran = inJapanese(line);
        EXPECT_EQ(ran.code, english.code);
        EXPECT_EQ(ran.out, english.out);
        EXPECT_FALSE(hasJapanese(english.err)) << english.err;
        EXPECT_NE(ran.err.find(text), std::string::npos) << ran.err;
    };
    const std::string none = folder.at("none.gpkg");
    said({"imprt"}, "「imprt」というコマンドはありません。コマンド: import, ");
    said({"imprt"}, "。「import」ではありませんか\n");
    said({"import", "--hlep"}, "import に --hlep というオプションはありません。「--help」ではありませんか\n");
    said({"--zone"}, "--zone は、このオプションを持つコマンド(import, export)の後に書いてください");
    said({"import", "a.sim", "--zone"}, "--zone には値が必要です: 1..19\n");
    said({"import", "a.sim", "--zone", "20"}, "--zone: 値「20」は使えません。使える値: 1..19\n");
    said({"import", "a.sim", "--zone", "1", "--zone", "2"}, "--zone は1回だけ指定できます\n");
    said({"info", "a.gpkg", "--json", "--alignments"}, "同時に指定できません\n");
    said({"preview"}, "FILE がありません\n");
    said({"preview", "a.sim", "b.sim"}, "余分な引数があります: b.sim\n");
    said({"import", folder.at("none.sim")}, "none.sim: 読めません: ファイルまたはフォルダがありません\n");
    said({"info", none}, "none.gpkg: 図面がありません\n");
    said({"export", none, "a.svg"}, "。このファイルは 'fenmark plot' で出力します\n");
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    said({"station", drawing, "CM", "20"}, "図面に「CM」という線形はありません。線形: CL\n");
    said({"station", drawing, "CL", "2000"}, "測点 2000 は線形「CL」の範囲外です: 0 から 100 まで\n");
    said({"export", drawing, folder.at("a.kml")},
         "図面に座標系の設定がありません。系番号を指定してください (--zone 1..19)\n");
    said({"export", drawing, folder.at("no/a.dxf")}, "書き込めません: ファイルまたはフォルダがありません\n");
}

} // namespace
} // namespace fenmark::cli
