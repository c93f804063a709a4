// The digits of every exported function, as a digest of its results for seeded elements. The digits are part of the
// contract, so every compiler and build type that is supported must give those of data/every_digit.txt.
//
// A line is the name, how many of the calls said done, and the FNV-1a digest of all statuses and outputs. The
// values are drawn one by one: the order in which a compiler evaluates arguments must not matter.
#include "every_function.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>

using namespace fenmark::alignment_test;

namespace {

constexpr int kCalls = 200;

// Draws in the order of the statements.
class Draw {
  public:
    explicit Draw(std::uint64_t seed) : state_(seed) {}
    double between(double low, double high) {
        const double unit = std::ldexp(static_cast<double>(next() >> 11), -53);
        return low + unit * (high - low);
    }
    int whole(int low, int high) { return low + static_cast<int>(next() % static_cast<std::uint64_t>(high - low + 1)); }

  private:
    // splitmix64
    std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    std::uint64_t state_;
};

// An element of the type that goes on from the last one, so that what is solved for exists often enough.
class Road {
  public:
    explicit Road(Draw& draw) : draw_(draw) { turn(-50.0); }

    Calelm next(char type) {
        Calelm rec;
        initCalelm(&rec);
        rec.sx = x_;
        rec.sy = y_;
        rec.sang = azimuth_;
        rec.dir = sense_;
        rec.len = draw_.between(40.0, 160.0);
        const double R = draw_.between(120.0, 400.0);
        switch (type) {
        case 'S':
            rec.type = ALI_STRAIGHT;
            radius_ = 0.0;
            break;
        case 'R':
            rec.type = ALI_ARC;
            rec.par = radius_ = radius_ == 0.0 ? R : radius_;
            break;
        default:
            rec.type = ALI_CLOTHOID;
            if (radius_ == 0.0 && draw_.whole(0, 1) == 0) {
                rec.dir = sense_ = -sense_;
            }
            rec.par = draw_.between(60.0, 150.0);
            rec.r1 = radius_;
            rec.r2 = radius_ == 0.0 || draw_.whole(0, 2) == 0 ? 1.5 * R : 0.0;
            radius_ = rec.r2;
        }
        EXPECT_EQ(ali_mak(&rec, 1), 0);
        x_ = rec.ex;
        y_ = rec.ey;
        azimuth_ = rec.eang;
        return rec;
    }
    // Where to go on: such that what comes passes the origin, ends before it or begins behind it.
    void turn(double begin) {
        azimuth_ = draw_.between(0.01, 6.27);
        x_ = begin * std::cos(azimuth_) + draw_.between(-10.0, 10.0);
        y_ = begin * std::sin(azimuth_) + draw_.between(-10.0, 10.0);
        sense_ = draw_.whole(0, 1) == 0 ? -1.0 : 1.0;
        radius_ = 0.0;
    }

  private:
    Draw& draw_;
    double x_ = 0.0;
    double y_ = 0.0;
    double azimuth_ = 0.0;
    double sense_ = 1.0;
    double radius_ = 0.0;
};

void fill(Draw& draw, const std::string& types, Arguments& a) {
    std::memset(static_cast<void*>(&a), 0, sizeof a);
    Road road(draw);
    const int kind = draw.whole(0, 2);
    std::size_t letter = 0;
    std::size_t argument = 0;
    for (Chain& chain : a.chains) {
        // One after another; all across the origin; the first towards it and the others away from it.
        if (kind != 0) {
            road.turn(kind == 1 ? -50.0 : argument == 0 ? -220.0 : 60.0);
        }
        for (std::size_t i = 0; i < kChainLength; ++i) {
            const bool more = letter < types.size() && types[letter] != ' ';
            if (i > 0 && !more) {
                chain[i] = chain[0];
                continue;
            }
            const char type = more ? types[letter++] : '?';
            chain[i] = road.next(type == '?' ? "SRA"[draw.whole(0, 2)] : type);
        }
        letter += letter < types.size() ? 1 : 0;
        ++argument;
    }
    const auto number = [&] { return draw.between(draw.whole(0, 2) == 0 ? 0.0 : -200.0, 200.0); };
    for (Reals& reals : a.reals) {
        std::generate(reals.begin(), reals.end(), number);
    }
    for (double& v : a.scalars) {
        v = draw.whole(0, 1) == 0 ? draw.between(0.01, 3.0) : number();
    }
    for (int& v : a.wholes) {
        v = draw.whole(-1, 2);
    }
    double* slots[] = {&a.curve.x,     &a.curve.y,     &a.curve.size1, &a.curve.size2,
                       &a.curve.size3, &a.curve.size4, &a.curve.size5, &a.curve.tangent1};
    for (double* slot : slots) {
        *slot = draw.between(60.0, 200.0);
    }
    a.curve.kind = static_cast<int16_t>(draw.whole(7, 8));
    for (AliIpEntry& entry : a.points) {
        entry.x = number();
        entry.y = number();
    }
    std::generate(a.list.begin(), a.list.end(), number);
    const int16_t count = 4;
    std::memcpy(a.list.data(), &count, sizeof count);
}

class Digest {
  public:
    void add(const void* bytes, std::size_t size) {
        const auto* byte = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < size; ++i) {
            value_ = (value_ ^ byte[i]) * 0x100000001b3u;
        }
    }
    // -0.0 and 0.0 are one number, and all that is not a number is one.
    void add(double value) {
        const double plain = std::isnan(value) ? kNotANumber : value + 0.0;
        add(&plain, sizeof plain);
    }
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_ = 0xcbf29ce484222325u;
};

void addOutputs(const Arguments& a, Digest& digest) {
    for (const Chain& chain : a.chains) {
        for (const Calelm& rec : chain) {
            digest.add(&rec.type, sizeof rec.type);
            for (const auto field : kRealFields) {
                digest.add(rec.*field);
            }
        }
    }
    for (const Reals& reals : a.reals) {
        for (const double v : reals) {
            digest.add(v);
        }
    }
    for (std::size_t i = 1; i < a.list.size(); ++i) {
        digest.add(a.list[i]);
    }
    for (const double v :
         {a.curve.azimuth_in, a.curve.azimuth_out, a.curve.angle, a.curve.tangent1, a.curve.tangent2}) {
        digest.add(v);
    }
    digest.add(&a.indexes, sizeof a.indexes);
}

} // namespace

TEST(EveryDigit, IsThatOfTheTable) {
    std::ifstream file(FENMARK_SOURCE_DIR "/tests/alignment/data/every_digit.txt");
    ASSERT_TRUE(file.good());
    std::map<std::string, std::string> stored;
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t colon = line.find(':');
        if (line[0] != '#' && colon != std::string::npos) {
            stored[line.substr(0, colon)] = line;
        }
    }
    EXPECT_EQ(stored.size(), everyFunction().size());
    for (const Function& f : everyFunction()) {
        Draw draw(20260501);
        Digest digest;
        int done = 0;
        for (int i = 0; i < kCalls; ++i) {
            Arguments a;
            fill(draw, f.types, a);
            const Answered answered = f.call(a);
            done += answered.status >= 0 ? 1 : 0;
            digest.add(&answered.status, sizeof answered.status);
            digest.add(answered.value);
            addOutputs(a, digest);
        }
        char text[120];
        std::snprintf(text, sizeof text, "%s: %d %016llx", f.name, done,
                      static_cast<unsigned long long>(digest.value()));
        EXPECT_EQ(stored[f.name], text);
    }
}
