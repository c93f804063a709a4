// What can be said on the command line, and what is answered to anything else.
#include "command_line.h"

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
    const std::string far = meant({"import", "a.sim", "--no-such-option"});
    EXPECT_NE(far.find("import has no option --no-such-option\n"), std::string::npos) << far;
}

TEST_F(ArgumentLine, ListsOfKindsTakeOneArgumentAndLeaveTheFilesBehindThem) {
    const std::string first = file(kPoints, "a.sim");
    const std::string second = file(kPoints, "b.sim");
    for (const char* option : {"--only", "--skip"}) {
        const Ran ran = fenmark({"import", option, "lots,ip", first, second});
        EXPECT_EQ(ran.code, kDone) << ran.err;
        EXPECT_NE(ran.out.find(second), std::string::npos) << ran.out;
    }
    EXPECT_EQ(fenmark({"import", first, "--only", "lots", "--only", "points", "--json"}).json()["points"], 2);
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

TEST_F(ArgumentLine, EmptyNameOfAFileIsWrongUsage) {
    for (const std::vector<std::string>& line : std::vector<std::vector<std::string>>{
             {"import", ""}, {"preview", ""}, {"import", file(kPoints), "--drawing", ""}}) {
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kWrongUsage);
        EXPECT_NE(ran.err.find("is an empty name"), std::string::npos) << ran.err;
    }
}

TEST_F(ArgumentLine, ExtensionOfAnExportSaysItsFormatOrIsWrongUsage) {
    for (const char* name : {"out.dwg", "out", "dxf", "out.svg"}) {
        const Ran ran = fenmark({"export", folder.at("d.gpkg"), folder.at(name)});
        EXPECT_EQ(ran.code, kWrongUsage) << name;
        EXPECT_NE(ran.err.find(".dxf, .xml, .sim, .geojson, .kml or .csv"), std::string::npos) << ran.err;
    }
    EXPECT_EQ(fenmark({"plot", folder.at("d.gpkg"), folder.at("out.png")}).code, kWrongUsage);
}

TEST_F(ArgumentLine, NegativeNumbersAreNoOptions) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "20", "-5"}).out, "20 5\n");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "20", "-.5"}).out, "20 0.5\n");
    EXPECT_EQ(fenmark({"locate", drawing, "CL", "20", "-3.25"}).out, "20 3.25\n");
    EXPECT_EQ(fenmark({"locate", drawing, "CL", "+20", "3.25"}).out, "20 -3.25\n");
}

} // namespace
} // namespace fenmark::cli
