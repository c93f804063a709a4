// What holds of all exported functions alike, whatever their arguments are: a status that says done never comes with a
// value that is not finite, and two equal results are equal in every byte.
#include "hostile_arguments.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

using namespace fenmark::alignment_test;

namespace {

constexpr double kHostile[] = {kNotANumber, kInfinity, -kInfinity, 1e300,  -1e300, 1e308, -1e308,
                               1e155,       1e17,      1e-320,     -1e-17, -1.0,   0.0,   0.5};

// Functions that answer 0 whatever they are given: their values are to be looked at. The headers say so.
const std::set<std::string> kWithoutFailure = {
    "CDAcalxy",    "CDLcalxy",    "CDRcalxy",    "CDOODistForRAR", "CDgetOrgA", "CDreverA",  "ali_KEnAng",
    "ali_KEnPncl", "ali_KEnPntb", "ali_KEnPntc", "ali_getlA",      "ali_paraS", "ali_pmovA", "ali_pmovR",
    "ali_pmovS",   "ali_tmovA",   "ali_tmovR",   "ali_tmovS",      "para_pmovr"};

constexpr int kHostileCalls = 400;
constexpr int kPaddingCalls = 100;

// The places that a call can read: the first record of each argument (all four of a chain), few reals and scalars.
std::size_t somePlace(Random& random) {
    const std::size_t records = 8 * kChainLength * std::size(kRealFields);
    switch (random.whole(0, 5)) {
    case 0:
    case 1: // the first record of an argument
        return static_cast<std::size_t>(random.whole(0, 6)) * kChainLength * std::size(kRealFields) +
               static_cast<std::size_t>(random.whole(0, static_cast<int>(std::size(kRealFields)) - 1));
    case 2: // a record of the first argument
        return static_cast<std::size_t>(random.whole(0, static_cast<int>(kChainLength * std::size(kRealFields)) - 1));
    case 3: // one of the first reals behind a pointer
        return records + static_cast<std::size_t>(16 * random.whole(0, 4) + random.whole(0, 3));
    case 4: // a scalar
        return records + 160 + static_cast<std::size_t>(random.whole(0, 7));
    default: // the entries of lists
        return records + 160 + 16 + static_cast<std::size_t>(random.whole(0, 39));
    }
}

} // namespace

TEST(HostileDoubles, EveryExportedFunctionIsInTheTable) {
    std::ifstream file(FENMARK_SOURCE_DIR "/docs/exports.txt");
    std::set<std::string> listed;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.starts_with("fmk_")) { // the exact curves have tests of their own
            listed.insert(line);
        }
    }
    std::set<std::string> here;
    for (const Function& f : everyFunction()) {
        here.insert(f.name);
    }
    EXPECT_EQ(here, listed);
}

TEST(HostileDoubles, FunctionsThatCannotFailSayItWhereTheyAreDeclared) {
    std::string headers;
    for (const auto& entry : std::filesystem::directory_iterator(FENMARK_SOURCE_DIR "/include/fenmark/alignment")) {
        std::ifstream file(entry.path());
        headers.append(std::istreambuf_iterator<char>(file), {});
    }
    for (const std::string& name : kWithoutFailure) {
        const std::size_t at = headers.find(" " + name + "(");
        ASSERT_NE(at, std::string::npos) << name;
        const std::size_t comment = headers.rfind("/**", at);
        EXPECT_NE(headers.substr(comment, at - comment).find("whatever"), std::string::npos) << name;
    }
}

TEST(HostileDoubles, NoStatusThatSaysDoneComesWithAValueThatIsNotFinite) {
    Random random(51002);
    SCOPED_TRACE(random.trace());
    std::size_t functions_that_answered = 0;
    for (const Function& f : everyFunction()) {
        if (f.answer != Answer::status || kWithoutFailure.contains(f.name)) {
            continue;
        }
        int done = 0;
        int bad = 0;
        for (int i = 0; i < kHostileCalls; ++i) {
            Arguments a;
            fill(random, f.types, a);
            const std::vector<double*> all = realsOf(a);
            for (int k = random.whole(0, 2); k > 0; --k) {
                *all[somePlace(random)] = kHostile[random.whole(0, static_cast<int>(std::size(kHostile)) - 1)];
            }
            std::vector<double> before;
            for (const double* p : all) {
                before.push_back(*p);
            }
            if (f.call(a).status < 0) {
                continue;
            }
            ++done;
            for (std::size_t j = 0; j < all.size(); ++j) {
                if (!std::isfinite(*all[j]) && std::memcmp(all[j], &before[j], sizeof(double)) != 0) {
                    ++bad;
                    break;
                }
            }
        }
        EXPECT_EQ(bad, 0) << f.name << ", done " << done << " times";
        functions_that_answered += done > 0 ? 1 : 0;
    }
    // The arguments are such that nearly every function has something to do. Compilers draw arguments in different orders,
    // so that a solver that seldom succeeds may find nothing to do with one of them.
    EXPECT_GT(functions_that_answered, 110u);
}

namespace {

// The bytes between the type and the first real.
constexpr std::size_t kPaddingAt = sizeof(int16_t);
constexpr std::size_t kPadding = offsetof(Calelm, sx) - kPaddingAt;

void setPadding(Calelm& rec, unsigned char byte) {
    std::memset(reinterpret_cast<unsigned char*>(&rec) + kPaddingAt, byte, kPadding);
}

[[gnu::noinline]] void soilTheStack(unsigned char byte) {
    volatile unsigned char stack[16384];
    for (auto& b : stack) {
        b = byte;
    }
}

} // namespace

TEST(Padding, EqualResultsCompareEqual) {
    Random random(51003);
    SCOPED_TRACE(random.trace());
    for (const Function& f : everyFunction()) {
        int bad = 0;
        for (int i = 0; i < kPaddingCalls; ++i) {
            Arguments given;
            fill(random, f.types, given);
            Arguments first = given;
            Arguments second = given;
            for (std::size_t c = 0; c < given.chains.size(); ++c) {
                for (std::size_t k = 0; k < kChainLength; ++k) {
                    setPadding(first.chains[c][k], 0xAA);
                    setPadding(second.chains[c][k], 0x55);
                }
            }
            soilTheStack(0x11);
            const int status = f.call(first).status;
            soilTheStack(0x77);
            ASSERT_EQ(f.call(second).status, status) << f.name;
            if (status < 0) {
                continue;
            }
            for (std::size_t c = 0; c < given.chains.size(); ++c) {
                for (std::size_t k = 0; k < kChainLength; ++k) {
                    if (!sameBits(given.chains[c][k], first.chains[c][k]) &&
                        std::memcmp(&first.chains[c][k], &second.chains[c][k], sizeof(Calelm)) != 0) {
                        ++bad;
                    }
                }
            }
        }
        EXPECT_EQ(bad, 0) << f.name;
    }
}
