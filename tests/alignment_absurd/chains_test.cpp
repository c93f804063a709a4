// Values that are not numbers, infinite or absurd in every place of what a function that makes chains is given: they end in
// a status, never in a hang, never in a chain that is not one, and a failure changes no record.
#include "makers.h"
#include "support/absurd_values.h"

#include <fstream>
#include <regex>
#include <set>

namespace fenmark::absurd {
namespace {

using test::kAbsurd;
using test::kRealFieldCount;
using test::kRealFields;

// Runs the maker upon spoilt records, and returns whether it made a chain.
bool judged(const Maker& maker, const std::vector<Calelm>& before, const double* p, const ::testing::Message& where) {
    auto records = before;
    const int status = static_cast<std::int16_t>(maker.run(records, p));
    if (status == -1) {
        EXPECT_TRUE(all_identical(records, before)) << where;
    } else if (maker.one_failure) {
        EXPECT_EQ(status, 0) << where;
    }
    if (status != 0 || !maker.makes_chain) {
        return false;
    }
    std::vector<Calelm> chain;
    for (const int index : maker.order) {
        chain.push_back(records[static_cast<std::size_t>(index)]);
    }
    EXPECT_TRUE(tangent_chain(maker.order.empty() ? records : chain, kRoundedJointTolerance))
        << where << " status " << status;
    return true;
}

TEST(AbsurdChains, TheGoodCasesOfThisTestAreGood) {
    for (const Maker& maker : all_makers()) {
        auto records = maker.records;
        const int status = maker.run(records, maker.p);
        if (maker.name != "moveR_dl0_rfAsf") { // whose gap is no gap of this chain
            EXPECT_EQ(status, 0) << maker.name;
        }
    }
}

// A function that makes a chain is named by what it makes of what: ali_RmakSS, ali_makrAR_P, alimake_rfArf.
TEST(AbsurdChains, EveryFunctionThatMakesAChainIsTried) {
    std::set<std::string> tried;
    for (const Maker& maker : all_makers()) {
        const std::string name = maker.name.substr(0, maker.name.find(' '));
        tried.insert(maker.one_failure ? "ali_" + name : name);
    }
    const std::regex makes("ali_[SRA]+mak[SRA]{2}|ali_mak[rs]\\w+|ali_mak[0-9SRAO]{3,}\\w*|alimake_\\w+|moveR_\\w+");
    std::ifstream exports(FENMARK_SOURCE_DIR "/docs/exports.txt");
    std::size_t found = 0;
    for (std::string name; std::getline(exports, name);) {
        if (std::regex_match(name, makes)) {
            ++found;
            EXPECT_TRUE(tried.contains(name)) << name << " is missing in makers.h or all_solvers.h";
        }
    }
    EXPECT_EQ(found, tried.size());
}

TEST(AbsurdChains, EveryFieldThatIsAbsurd) {
    for (const Maker& maker : all_makers()) {
        for (std::size_t record = 0; record < maker.records.size(); ++record) {
            for (int field = 0; field < kRealFieldCount; ++field) {
                for (const double value : kAbsurd) {
                    auto records = maker.records;
                    records[record].*kRealFields[field] = value;
                    judged(maker, records, maker.p,
                           ::testing::Message()
                               << maker.name << " record " << record << " field " << field << " value " << value);
                }
            }
        }
    }
}

TEST(AbsurdChains, SomeFieldsAtOnceThatAreAbsurd) {
    for (const Maker& maker : all_makers()) {
        Random random(20260502);
        for (int i = 0; i < 1500; ++i) {
            auto records = maker.others ? maker.others(random) : maker.records;
            for (int replaced = random.pick(4); replaced >= 0; --replaced) {
                const auto which = static_cast<std::size_t>(random.pick(static_cast<int>(records.size())));
                records[which].*kRealFields[random.pick(kRealFieldCount)] = kAbsurd[random.pick(std::size(kAbsurd))];
            }
            judged(maker, records, maker.p, ::testing::Message() << maker.name << " case " << i);
        }
    }
}

TEST(AbsurdChains, APointThatIsNoNumberIsRefused) {
    for (const Maker& maker : all_makers()) {
        if (!maker.takes_point) {
            continue;
        }
        for (const int coordinate : {0, 1}) {
            for (const double value : kAbsurd) {
                double p[2] = {maker.p[0], maker.p[1]};
                p[coordinate] = value;
                auto records = maker.records;
                const int status = static_cast<std::int16_t>(maker.run(records, p));
                const auto where = ::testing::Message() << maker.name << " " << value;
                if (status == 0) {
                    EXPECT_TRUE(std::isfinite(value)) << where;
                    EXPECT_TRUE(tangent_chain(records, kRoundedJointTolerance)) << where;
                } else {
                    EXPECT_EQ(status, -1) << where;
                    EXPECT_TRUE(all_identical(records, maker.records)) << where;
                }
            }
        }
    }
}

// Records of random numbers: whatever a function calls a success has to be one.
TEST(AbsurdChains, RandomRubbish) {
    Random random(5500);
    const auto rubbish = [&](double scale) { return static_cast<double>(random.uniform(-1.0, 1.0)) * scale; };
    int successes = 0;
    for (const Maker& maker : all_makers()) {
        for (int i = 0; i < 2000; ++i) {
            auto records = maker.records;
            for (Calelm& e : records) {
                for (int field = 0; field < kRealFieldCount; ++field) {
                    if (field != 4 && random.pick(8) == 0) {
                        e.*kRealFields[field] = rubbish(200.0);
                    }
                }
                if (random.pick(8) == 0) {
                    e.dir = -e.dir;
                }
            }
            const double p[2] = {maker.p[0] + rubbish(50.0), maker.p[1] + rubbish(50.0)};
            const bool made = judged(maker, records, p, ::testing::Message() << maker.name << " case " << i);
            successes += made && !maker.one_failure ? 1 : 0;
        }
    }
    EXPECT_GT(successes, 100) << "the rubbish leaves the builders some cases that can be solved";
}

TEST(AbsurdChains, AnArcInsideAnotherIsNoSuccessWhereTheChainIsNotTangent) {
    const auto good =
        lay_chain({10, 20, 1}, {arc(1, 200, 80), clothoid(1, 60, 200, 80), arc(1, 80, 60), arc(1, 150, 90)});
    Random random(5501);
    int successes = 0;
    for (int i = 0; i < 20000; ++i) {
        auto records = good;
        for (Calelm& e : records) {
            CDchgSpace(&e, &e);
            for (int field = 0; field < kRealFieldCount; ++field) {
                if (field != 4 && random.pick(12) == 0) {
                    e.*kRealFields[field] = random.uniform(-200.0, 200.0);
                }
            }
            if (random.pick(8) == 0) {
                e.dir = -e.dir;
            }
        }
        const auto before = records;
        const int mode = random.coin() ? 0 : -1;
        if (ARmakRR(mode, &records[0], &records[3], &records[2], &records[1]) != 0) {
            for (std::size_t k = 0; k < records.size(); ++k) {
                EXPECT_TRUE(identical(records[k], before[k])) << i;
            }
            continue;
        }
        ++successes;
        for (Calelm& e : records) {
            CDchgSpace(&e, &e);
            EXPECT_GE(ali_mak(&e, 0), 0) << i << describe(e);
        }
        EXPECT_TRUE(tangent_chain(records, kRoundedJointTolerance)) << "case " << i;
    }
    EXPECT_GT(successes, 100);
}

TEST(AbsurdChains, CurvesAtAnIpRefuseAbsurdSizesAndPoints) {
    for (int slot = 0; slot < 9; ++slot) {
        for (const double value : kAbsurd) {
            double previous[2] = {-500.0, 0.0};
            double next[2] = {300.0, 400.0};
            AliIpCurve ip{};
            ip.size1 = 60.0;
            ip.size2 = 100.0;
            ip.size3 = 60.0;
            ip.size4 = 80.0;
            ip.size5 = 50.0;
            ip.tangent1 = 120.0;
            double* const slots[] = {&previous[0], &next[1],  &ip.x,     &ip.y,    &ip.size1,
                                     &ip.size2,    &ip.size3, &ip.size4, &ip.size5};
            *slots[slot] = value;
            const auto where = ::testing::Message() << "slot " << slot << " value " << value;
            Calelm e[5]{};
            AliIpCurve entry = ip;
            if (ali_IPsetR(previous, &entry, next, &e[0]) == 0) {
                EXPECT_TRUE(true_to_itself(e[0], kCurveTolerance + 1e-12 * std::abs(e[0].par))) << where;
            }
            entry = ip;
            if (ali_IPsetAA(previous, &entry, next, &e[0], &e[1]) == 0) {
                EXPECT_TRUE(joined(e[0], e[1])) << where;
            }
            entry = ip;
            if (ali_IPsetARA(previous, &entry, next, &e[0], &e[1], &e[2]) == 0) {
                EXPECT_TRUE(joined(e[0], e[1]) && joined(e[1], e[2])) << where;
            }
            entry = ip;
            if (ali_IPsetARARA(previous, &entry, next, &e[0], &e[1], &e[2], &e[3], &e[4]) == 0) {
                EXPECT_TRUE(tangent_chain(std::span<const Calelm>(e, 5))) << where;
            }
        }
    }
}

} // namespace
} // namespace fenmark::absurd
