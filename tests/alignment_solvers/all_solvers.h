// Every tangent solver behind one shape: the given records first, then the records to be made.
#pragma once

#include "support/exact_chain.h"

#include <fenmark/alignment.h>

#include <functional>
#include <string>
#include <vector>

namespace fenmark::way_back {

struct Solver {
    std::string name;
    int first_type; // of the two given records, in the order of the arguments
    int second_type;
    std::vector<int> made;  // types of the records to be made, in the order of the arguments
    std::vector<int> order; // order of travel, as indexes into given and made records
    std::function<int(std::vector<Calelm>&)> call;
};

inline std::vector<Solver> all_solvers() {
    using V = std::vector<Calelm>&;
    std::vector<Solver> all;
    all.push_back({"RmakSS", 1, 1, {2}, {0, 2, 1}, [](V e) { return ali_RmakSS(&e[0], &e[1], &e[2]); }});
    all.push_back({"AAmakSS", 1, 1, {3, 3}, {0, 2, 3, 1}, [](V e) { return ali_AAmakSS(&e[0], &e[1], &e[2], &e[3]); }});
    all.push_back({"ARAmakSS", 1, 1, {3, 2, 3}, {0, 2, 3, 4, 1}, [](V e) {
                       return ali_ARAmakSS(&e[0], &e[1], &e[2], &e[3], &e[4]);
                   }});
    for (const int side : {-1, 1}) {
        const std::string at = " side " + std::to_string(side);
        const bool line_first = side == -1;
        all.push_back({"RmakSR" + at, 1, 2, {2}, line_first ? std::vector{0, 2, 1} : std::vector{1, 2, 0}, [side](V e) {
                           return ali_RmakSR(side, &e[0], &e[1], &e[2]);
                       }});
        for (const int mode : {0, -1}) {
            all.push_back({"RAmakSR" + at + " mode " + std::to_string(mode),
                           1,
                           2,
                           {2, 3},
                           line_first ? std::vector{0, 2, 3, 1} : std::vector{1, 3, 2, 0},
                           [side, mode](V e) { return ali_RAmakSR(side, mode, &e[0], &e[1], &e[2], &e[3]); }});
        }
        all.push_back(
            {"ARmakRR" + at, 2, 2, {2, 3}, side == -1 ? std::vector{0, 3, 2, 1} : std::vector{0, 2, 3, 1}, [side](V e) {
                 return ali_ARmakRR(side, -1, &e[0], &e[1], &e[2], &e[3]);
             }});
        all.push_back(
            {"SAmakRR" + at, 2, 2, {1, 3}, side == 1 ? std::vector{0, 2, 3, 1} : std::vector{1, 3, 2, 0}, [side](V e) {
                 return ali_SAmakRR(side, &e[0], &e[1], &e[2], &e[3]);
             }});
        all.push_back({"ARAAmakSR" + at,
                       1,
                       2,
                       {3, 2, 3, 3},
                       side == 1 ? std::vector{0, 2, 3, 4, 5, 1} : std::vector{1, 5, 4, 3, 2, 0},
                       [side](V e) { return ali_ARAAmakSR(side, &e[0], &e[1], &e[2], &e[3], &e[4], &e[5]); }});
    }
    all.push_back({"RmakRR", 2, 2, {2}, {0, 2, 1}, [](V e) { return ali_RmakRR(&e[0], &e[1], &e[2]); }});
    all.push_back({"SmakRR", 2, 2, {1}, {0, 2, 1}, [](V e) { return ali_SmakRR(&e[0], &e[1], &e[2]); }});
    for (const int mode1 : {0, -1}) {
        for (const int mode2 : {0, -1}) {
            all.push_back(
                {"ARAmakRR modes " + std::to_string(mode1) + " " + std::to_string(mode2),
                 2,
                 2,
                 {3, 2, 3},
                 {0, 2, 3, 4, 1},
                 [mode1, mode2](V e) { return ali_ARAmakRR(mode1, mode2, &e[0], &e[1], &e[2], &e[3], &e[4]); }});
        }
    }
    all.push_back({"ASAmakRR", 2, 2, {3, 1, 3}, {0, 2, 3, 4, 1}, [](V e) {
                       return ali_ASAmakRR(&e[0], &e[1], &e[2], &e[3], &e[4]);
                   }});
    return all;
}

/// The chain in the order of travel.
inline std::vector<Calelm> travelled(const Solver& solver, const std::vector<Calelm>& records) {
    std::vector<Calelm> chain;
    for (const int index : solver.order) {
        chain.push_back(records[static_cast<std::size_t>(index)]);
    }
    return chain;
}

/// A straight or an arc within some 300 m of a place.
inline Calelm given_element(exact::Random& random, int type, const exact::Pose& near) {
    exact::Pose pose{near.x + random.uniform(-300, 300), near.y + random.uniform(-300, 300),
                     random.uniform(0.0, 2.0 * std::numbers::pi)};
    const double R = random.radius();
    Calelm e = exact::lay(pose, type == 1 ? exact::straight(random.uniform(1.0, 500.0))
                                          : exact::arc(random.sign(), R, R * random.uniform(0.05, 3.1)));
    EXPECT_EQ(0, ali_mak(&e, 0));
    return e;
}

/// Two given elements somewhere near each other, and the sizes of what is to be made.
inline std::vector<Calelm> random_records(exact::Random& random, const Solver& solver) {
    const exact::Pose near = random.pose();
    std::vector<Calelm> records = {given_element(random, solver.first_type, near),
                                   given_element(random, solver.second_type, near)};
    for (const int type : solver.made) {
        Calelm e{};
        e.type = static_cast<std::int16_t>(type);
        e.dir = random.sign();
        e.par = type == 2 ? random.radius() : type == 3 ? random.radius(5.0, 400.0) : 0.0;
        records.push_back(e);
    }
    return records;
}

} // namespace fenmark::way_back
