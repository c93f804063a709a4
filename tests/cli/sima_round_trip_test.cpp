// A drawing that is written as a SIMA file and imported again is the same drawing.
#include "command_line.h"
#include "sima/generator/sima_generator.h"

#include <cmath>
#include <sstream>

namespace fenmark::cli {
namespace {

constexpr double kPlace = 1e-6; // metres

// Identifiers are not compared.
void expectSame(const nlohmann::json& was, const nlohmann::json& now, const std::string& where) {
    if (was.is_number_float() && now.is_number()) {
        EXPECT_NEAR(was.get<double>(), now.get<double>(), kPlace) << where;
    } else if (was.is_structured()) {
        ASSERT_EQ(was.size(), now.size()) << where;
        for (const auto& [key, value] : was.items()) {
            if (key != "id") {
                ASSERT_TRUE(was.is_array() || now.contains(key)) << where << "/" << key;
                expectSame(value, was.is_array() ? now[std::stoul(key)] : now[key], where + "/" + key);
            }
        }
    } else {
        EXPECT_EQ(was, now) << where;
    }
}

class SimaRoundTrip : public CommandLine {
  protected:
    void comesBack(const std::string& path) {
        const std::string name = std::filesystem::path(path).filename().string();
        const std::string first = folder.at("first.gpkg");
        const std::string second = folder.at("second.gpkg");
        ASSERT_EQ(fenmark({"import", path, "--drawing", first, "-q"}).code, kDone);
        std::filesystem::create_directory(folder.at("again"));
        const std::string written = folder.at("again/" + name);
        const Ran exported = fenmark({"export", first, written});
        ASSERT_EQ(exported.code, kDone) << exported.err;
        EXPECT_EQ(exported.err, "") << "nothing differs";
        const Ran imported = fenmark({"import", written, "--drawing", second, "--strict"});
        ASSERT_EQ(imported.code, kDone) << imported.err << imported.out;
        const nlohmann::json was = info(first);
        ASSERT_GT(was["entities"].size(), 10U);
        expectSame(was, info(second), "");
    }
};

TEST_F(SimaRoundTrip, OfTheExamples) {
    for (const char* name : {"road.sim", "cadastral.sim", "dirty.sim"}) {
        SCOPED_TRACE(name);
        for (const char* left : {"first.gpkg", "second.gpkg", "again"}) {
            std::filesystem::remove_all(folder.at(left));
        }
        comesBack(example(name));
    }
}

TEST_F(SimaRoundTrip, OfAGeneratedVillage) {
    sima::GeneratorSizes sizes;
    sizes.points = 600;
    sizes.lots = 100;
    sizes.routes = 14;
    sizes.longitudinal = 5;
    sizes.crossSections = 3;
    std::ostringstream out;
    sima::generateSima(out, sizes);
    comesBack(file(out.str(), "village.sim"));
}

TEST_F(SimaRoundTrip, OfNamesThatOtherProgramsFearAndRowsWithBlanks) {
    comesBack(file("A00,\r\nA01,1,\"a,\"\"b\"\"\",1.0,2.0,0.0,\r\nA01,2,  x  ,1.0,3.0,1.2345678,\r\n"
                   "A01,3,\"   \",5.5,3.0,,\r\nA01,4,,5.5,4.0,,\r\nA01,5,\xFB\xFC\xFA\xB1,6.5,4.0,,\r\n"
                   "A01,6,p,7,4,,\r\nA01,7,p,8,4,,\r\nA01,8,p,9,4,,\r\nA01,9,p,9,5,,\r\nA01,10,p,9,6,,\r\nA99,\r\n"
                   "D00,1,\"l,1\",1,\r\nB01,1,,\r\nB01,2,,\r\nB01,3,,\r\nD99,\r\n"
                   "F00,4,1,one,6,\r\nB01,3,,\r\nF99,\r\nF00,5,1,,5,\r\nB01,3,,\r\nB01,3,,\r\nF99,\r\n"));
}

} // namespace
} // namespace fenmark::cli
