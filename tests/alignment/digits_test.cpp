// The digits are part of the contract: results of every family, bit for bit, against a table that every compiler and
// every build type must give again. Floating-point contraction is off for that reason.
//
// The table is data/digits.txt: a name, then the values as hexadecimal doubles. Sine, cosine and arc tangent come from
// the C library; one that rounds them otherwise in the last bit gives other digits, and the failure then shows every
// line.
#include "support_alignment.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <vector>

using namespace fenmark::alignment_test;

namespace {

class Table {
  public:
    void add(const std::string& name, std::initializer_list<double> values) {
        std::string line;
        for (const double v : values) {
            char text[64];
            std::snprintf(text, sizeof text, " %a", v);
            line += text;
        }
        lines_.emplace_back(name, line);
    }
    void add(const std::string& name, const Calelm& e) {
        add(name, {e.sx, e.sy, e.ex, e.ey, e.par, e.len, e.sang, e.eang, e.k1, e.k2, e.k3});
    }
    const std::vector<std::pair<std::string, std::string>>& lines() const { return lines_; }

  private:
    std::vector<std::pair<std::string, std::string>> lines_;
};

void addWalk(Table& table, const std::string& name, const Calelm& e) {
    double p[2] = {0.0, 0.0};
    double t = 0.0;
    ali_onl(&e, 0.37 * e.len, p, &t);
    table.add("onl " + name, {p[0], p[1], t});
    const double q[2] = {p[0] + 3.0, p[1] - 2.0};
    double s = 0.0;
    double foot[2] = {0.0, 0.0};
    ali_proj(&e, q, &s, foot);
    table.add("proj " + name, {s, foot[0], foot[1]});
    Calelm moved{};
    ali_pmov(&e, 12.345, 2.1, &moved);
    table.add("pmov " + name, moved);
    ali_tmov(&e, q, 0.7, &moved);
    table.add("tmov " + name, moved);
}

void addMeeting(Table& table, const std::string& name, const Calelm& e1, const Calelm& e2) {
    double p1[2] = {0.0, 0.0};
    double p2[2] = {0.0, 0.0};
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    const int status = ali_intp(&e1, &e2, p1, &a, &b, p2, &c, &d);
    table.add("intp " + name, {static_cast<double>(status), p1[0], p1[1], a, b, p2[0], p2[1], c, d});
}

Table results() {
    Table table;
    for (const double tau : {1.389e-6, 0.01, 0.125, 0.5, 1.5, 2.5}) {
        double X = 0.0;
        double Y = 0.0;
        CDAcalxy(123.0, tau, &X, &Y);
        table.add("series " + std::to_string(tau), {X, Y});
        double v[13];
        clothoidElements(123.0, tau, v);
        table.add("precise " + std::to_string(tau), {v[4], v[5], v[7], v[8], v[11], v[12]});
    }
    const Place place{-36000.0, 12000.0};
    const Calelm straight = straightRecord(place.x - 60.0, place.y + 5.0, place.x + 140.0, place.y + 77.0);
    const Calelm arc = arcRecord(place.x, place.y, place.x + 70.0, place.y + 90.0, -1.0, 130.0);
    const Calelm long_arc = arcFrom(place.x, place.y, 5.5, 1.0, 60.0, 250.0);
    const Calelm grows = clothoidFrom(place.x, place.y, 0.4, 1.0, 110.0, 0.0, 120.0);
    const Calelm flattens = clothoidFrom(place.x + 20.0, place.y - 40.0, 1.9, -1.0, 140.0, 110.0, 450.0);
    Calelm between = flattens;
    ali_makA(&between);
    table.add("straight", straight);
    table.add("arc", arc);
    table.add("long arc", long_arc);
    table.add("clothoid that sharpens", grows);
    table.add("clothoid that flattens", flattens);
    table.add("clothoid between points", between);
    addWalk(table, "straight", straight);
    addWalk(table, "arc", arc);
    addWalk(table, "clothoid that sharpens", grows);
    addWalk(table, "clothoid that flattens", flattens);
    addMeeting(table, "straight straight", straight, straightRecord(place.x, place.y, place.x + 20.0, place.y + 90.0));
    addMeeting(table, "straight arc", straight, arc);
    addMeeting(table, "arc arc", long_arc, arc);
    addMeeting(table, "straight clothoid", straight, flattens);
    addMeeting(table, "arc clothoid", long_arc, flattens);
    addMeeting(table, "clothoid clothoid", grows,
               clothoidFrom(place.x + 60.0, place.y - 40.0, 1.9, -1.0, 140.0, 110.0, 450.0));
    addMeeting(table, "straight long arc",
               straightRecord(long_arc.k1 - 90.0, long_arc.k2 + 11.0, long_arc.k1 + 85.0, long_arc.k2 + 23.0),
               long_arc);
    return table;
}

} // namespace

TEST(Digits, AreThoseOfTheTable) {
    std::ifstream file(FENMARK_SOURCE_DIR "/tests/alignment/data/digits.txt");
    ASSERT_TRUE(file.good());
    std::map<std::string, std::string> stored;
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t colon = line.find(':');
        if (!line.empty() && line[0] != '#' && colon != std::string::npos) {
            stored[line.substr(0, colon)] = line.substr(colon + 1);
        }
    }
    const Table table = results();
    EXPECT_EQ(stored.size(), table.lines().size());
    for (const auto& [name, values] : table.lines()) {
        EXPECT_EQ(stored[name], values) << name << ":" << values;
    }
}
