// Values that are not numbers, infinite or absurd end in a status, never in a hang, and never in a chain that is not
// one.
#include <fenmark/alignment/chains.h>
#include <fenmark/alignment/compound.h>
#include <fenmark/alignment/construction.h>
#include <fenmark/alignment/ip.h>
#include <fenmark/alignment/point.h>
#include <fenmark/alignment/primitives.h>

#include "support/absurd_values.h"
#include "support/sweep.h"

#include <functional>

namespace {

using namespace fenmark::exact;
using fenmark::test::kAbsurd;
using fenmark::test::kRealFieldCount;
using fenmark::test::kRealFields;

// A builder with good input that can be spoilt: `run` takes the records in the order of travel, returns the status, and
// leaves the chain there.
struct Builder {
    std::string name;
    std::vector<Calelm> records;
    std::function<int(std::vector<Calelm>&, const double*)> run;
    double p[2];
    // Whether a success must leave a tangent chain; the refits of a chain with a gap do not.
    bool makes_chain = true;
};

std::vector<Builder> builders() {
    const auto egg = lay_chain({10, 20, 1}, {arc(1, 200, 120), clothoid(1, 80, 200, 100), arc(1, 100, 60)});
    const auto s =
        lay_chain({10, 20, 2}, {arc(1, 200, 120), clothoid(1, 90, 200, 0), clothoid(-1, 80, 0, 150), arc(-1, 150, 60)});
    const auto eased = lay_chain({10, 20, 3}, {straight(70), clothoid(-1, 80, 0, 150), arc(-1, 150, 60)});
    const auto pair = lay_chain({10, 20, 4}, {arc(1, 100, 60), arc(-1, 120, 60)});
    const auto tangent = lay_chain({10, 20, 5}, {arc(1, 100, 60), straight(40)});
    const auto tangent_arc = lay_chain({10, 20, 5}, {straight(40), arc(1, 100, 60)});
    const auto long_s =
        lay_chain({10, 20, 0.5}, {arc(1, 100, 60), clothoid(1, 60, 100, 0), clothoid(-1, 60, 0, 120), arc(-1, 120, 80),
                                  clothoid(-1, 60, 120, 0), clothoid(1, 60, 0, 100), arc(1, 100, 60)});
    const auto origin = lay_chain({10, 20, 1}, {arc(1, 200, 120), clothoid(1, 80, 0, 100), arc(1, 100, 60)});
    const auto end_of_last = [](const std::vector<Calelm>& chain, Builder b) {
        b.records = chain;
        b.p[0] = chain.back().ex;
        b.p[1] = chain.back().ey;
        return b;
    };
    std::vector<Builder> all;
    const auto add = [&](const char* name, const std::vector<Calelm>& chain,
                         std::function<int(std::vector<Calelm>&, const double*)> run, bool makes_chain = true) {
        all.push_back(end_of_last(chain, {name, {}, std::move(run), {0, 0}, makes_chain}));
    };
    // A value that is only told, not the chain.
    static double out1;
    static double out2;
    add(
        "ali_makRAR", egg, [](auto& r, const double*) { return ali_makRAR(&r[0], &r[1], &r[2], &out1, &out2); }, false);
    add(
        "ali_makRAAR", s, [](auto& r, const double*) { return ali_makRAAR(&r[0], &r[1], &r[2], &r[3], &out1); }, false);
    add(
        "ali_makSAR", eased, [](auto& r, const double*) { return ali_makSAR(1, &r[0], &r[1], &r[2], &out1); }, false);
    add("ali_mak3R4A", long_s,
        [](auto& r, const double*) { return ali_mak3R4A(&out1, &r[0], &r[1], &r[2], &r[3], &r[4], &r[5], &r[6]); });
    add("ali_makAOR_P", origin, [](auto& r, const double* p) { return ali_makAOR_P(p, 1, &r[0], &r[1], &r[2]); });
    add("ali_makrS_P", tangent, [](auto& r, const double* p) { return ali_makrS_P(p, 1, &r[0], &r[1]); });
    add("ali_makrR_P", pair, [](auto& r, const double* p) { return ali_makrR_P(p, 1, &r[0], &r[1]); });
    add("ali_makrR_P_S", pair, [](auto& r, const double* p) { return ali_makrR_P_S(p, 1, &r[1], &r[0]); });
    add("ali_makrAR_P", egg,
        [](auto& r, const double* p) { return ali_makrAR_P(p, 1, &r[0], &r[1], &r[2], &out1, &out2); });
    add("ali_makrAAR_P", s,
        [](auto& r, const double* p) { return ali_makrAAR_P(p, 1, &r[0], &r[1], &r[2], &r[3], &out1); });
    add("ali_maksR_P", tangent_arc, [](auto& r, const double* p) { return ali_maksR_P(p, 1, &r[0], &r[1]); });
    add("ali_maksAR_P", eased, [](auto& r, const double* p) { return ali_maksAR_P(p, 1, &r[0], &r[1], &r[2]); });
    add(
        "alimake_rfAArf", s, [](auto& r, const double*) { return alimake_rfAArf(r.data(), &out1); }, false);
    add(
        "alimake_rfArf", egg,
        [](auto& r, const double*) {
            out1 = 0.0;
            return alimake_rfArf(r.data(), &out1);
        },
        false);
    add(
        "alimake_rfAsf", eased, [](auto& r, const double*) { return alimake_rfAsf(r.data(), 0.0, 1); }, false);
    add(
        "moveR_dl0_rfAArf", s,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfAArf(1, &out1, r.data());
        },
        false);
    add(
        "moveR_dl0_rfArf", egg,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfArf(1, &out1, r.data());
        },
        false);
    add(
        "moveR_dl0_rfAsf", eased,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfAsf(1, 1, &out1, r.data());
        },
        false);
    // The straight of makrAS_P lies before the arc, the point at its start.
    all.push_back({"ali_makrAS_P",
                   eased,
                   [](auto& r, const double* p) { return ali_makrAS_P(p, 1, &r[2], &r[1], &r[0]); },
                   {eased[0].sx, eased[0].sy}});
    return all;
}

TEST(BadInput, TheGoodCasesOfThisTestAreGood) {
    for (Builder& b : builders()) {
        auto records = b.records;
        const int status = b.run(records, b.p);
        if (b.name != "moveR_dl0_rfAsf") { // whose gap is no gap of this chain
            EXPECT_EQ(status, 0) << b.name;
        }
    }
}

TEST(BadInput, EveryFieldThatIsAbsurdEndsInAStatusAndNeverInAChainThatIsNotTangent) {
    for (Builder& b : builders()) {
        for (std::size_t record = 0; record < b.records.size(); ++record) {
            for (int field = 0; field < kRealFieldCount; ++field) {
                for (const double value : kAbsurd) {
                    auto records = b.records;
                    records[record].*kRealFields[field] = value;
                    const auto before = records;
                    const int status = static_cast<std::int16_t>(b.run(records, b.p));
                    const auto where = ::testing::Message() << b.name << " record " << record << " field " << field
                                                            << " value " << value << " status " << status;
                    if (status == 0) {
                        if (b.makes_chain) {
                            EXPECT_TRUE(tangent_chain(records, kRoundedJointTolerance)) << where;
                        }
                    } else if (status == -1) {
                        for (std::size_t i = 0; i < records.size(); ++i) {
                            EXPECT_TRUE(identical(records[i], before[i])) << where;
                        }
                    }
                }
            }
        }
    }
}

TEST(BadInput, APointThatIsNoNumberIsRefusedWithNothingChangedAndAnAbsurdOneNeverBreaksAChain) {
    for (Builder& b : builders()) {
        if (!b.makes_chain || b.name == "ali_mak3R4A") {
            continue;
        }
        for (const int coordinate : {0, 1}) {
            for (const double value : kAbsurd) {
                double p[2] = {b.p[0], b.p[1]};
                p[coordinate] = value;
                auto records = b.records;
                const int status = static_cast<std::int16_t>(b.run(records, p));
                if (status == 0) {
                    EXPECT_TRUE(std::isfinite(value)) << b.name << " " << value;
                    EXPECT_TRUE(tangent_chain(records, kRoundedJointTolerance)) << b.name << " " << value;
                } else {
                    EXPECT_EQ(status, -1) << b.name << " " << value;
                    for (std::size_t i = 0; i < records.size(); ++i) {
                        EXPECT_TRUE(identical(records[i], b.records[i])) << b.name << " " << value;
                    }
                }
            }
        }
    }
}

TEST(BadInput, RandomRubbishIsNeverATangentChainByWord) {
    // Records of random numbers: whatever a builder calls a success has to be one.
    Random random(5500);
    const auto rubbish = [&](double scale) { return static_cast<double>(random.uniform(-1.0, 1.0)) * scale; };
    int successes = 0;
    for (Builder& b : builders()) {
        for (int i = 0; i < 2000; ++i) {
            auto records = b.records;
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
            const double p[2] = {b.p[0] + rubbish(50.0), b.p[1] + rubbish(50.0)};
            const auto before = records;
            const int status = static_cast<std::int16_t>(b.run(records, p));
            if (status == 0 && b.makes_chain) {
                ++successes;
                EXPECT_TRUE(tangent_chain(records, kRoundedJointTolerance)) << b.name << " case " << i;
            } else if (status == -1) {
                for (std::size_t k = 0; k < records.size(); ++k) {
                    EXPECT_TRUE(identical(records[k], before[k])) << b.name << " case " << i;
                }
            }
        }
    }
    EXPECT_GT(successes, 100) << "the rubbish leaves some cases that can be solved";
}

TEST(BadInput, AnArcInsideAnotherIsNeverToldWhereTheChainIsNotTangent) {
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

TEST(BadInput, CurvesAtAnIpRefuseAbsurdSizesAndPoints) {
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
