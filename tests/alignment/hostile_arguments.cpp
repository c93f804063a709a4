// Arguments for any exported function.
#include "hostile_arguments.h"

#include <algorithm>
#include <cstring>

namespace fenmark::alignment_test {

namespace {

double number(Random& random) {
    return random.whole(0, 3) == 0 ? random.uniform(0.0, 6.0) : random.uniform(-300.0, 300.0);
}

Calelm element(Random& random, char type) {
    if (type == '?') {
        type = "SRA"[random.whole(0, 2)];
    }
    switch (type) {
    case 'S':
        return randomStraight(random, {0.0, 0.0});
    case 'R':
        return randomArc(random, {0.0, 0.0}, 2.0);
    default:
        return randomClothoid(random, {0.0, 0.0});
    }
}

// The elements of one argument after another as a chain that joins: each begins at the pose in which the one before ends.
void fillJoined(Random& random, const std::string& types, Arguments& a) {
    double x = random.uniform(-100.0, 100.0);
    double y = random.uniform(-100.0, 100.0);
    double azimuth = random.uniform(0.01, 6.27);
    const double sense = random.sign();
    double radius = 0.0; // of the arc before, 0 after anything else
    std::size_t chain = 0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (types[i] == ' ') {
            ++chain;
            place = 0;
            continue;
        }
        const std::size_t next = types.find_first_not_of(' ', i + 1);
        const double R = random.uniform(150.0, 400.0);
        Calelm rec{};
        switch (types[i] == '?' ? "SRA"[random.whole(0, 2)] : types[i]) {
        case 'S':
            rec = straightRecord(x, y, x + 100.0 * std::cos(azimuth), y + 100.0 * std::sin(azimuth));
            radius = 0.0;
            break;
        case 'R':
            radius = radius == 0.0 ? R : radius;
            rec = arcFrom(x, y, azimuth, sense, radius, random.uniform(30.0, 80.0));
            break;
        default: {
            const bool meets_arc = next != std::string::npos && types[next] == 'R';
            rec = clothoidFrom(x, y, azimuth, sense, 120.0, radius, meets_arc || radius == 0.0 ? R : 0.0);
            radius = rec.r2;
        }
        }
        a.chains[chain][place++] = rec;
        x = rec.ex;
        y = rec.ey;
        azimuth = rec.eang;
    }
}

} // namespace

void fill(Random& random, const char* types, Arguments& a) {
    const char* letter = types;
    for (Chain& chain : a.chains) {
        for (Calelm& rec : chain) {
            rec = element(random, *letter == '\0' || *letter == ' ' ? '?' : *letter++);
        }
        letter += *letter == ' ' ? 1 : 0;
    }
    if (random.whole(0, 2) == 0) {
        fillJoined(random, types, a);
    }
    for (Reals& reals : a.reals) {
        std::generate(reals.begin(), reals.end(), [&] { return number(random); });
    }
    std::generate(a.scalars.begin(), a.scalars.end(), [&] { return number(random); });
    std::generate(a.wholes.begin(), a.wholes.end(), [&] { return random.whole(-1, 3); });
    a.indexes = {};
    a.curve = AliIpCurve{};
    a.curve.kind = static_cast<int16_t>(random.whole(7, 8));
    for (double* slot : {&a.curve.x, &a.curve.y, &a.curve.size1, &a.curve.size2, &a.curve.size3, &a.curve.size4,
                         &a.curve.size5, &a.curve.tangent1, &a.curve.tangent2}) {
        *slot = random.uniform(30.0, 300.0);
    }
    for (AliIpEntry& entry : a.points) {
        entry = {0.0, number(random), number(random), 0.0, 0.0, 0.0, 0.0};
    }
    std::generate(a.list.begin(), a.list.end(), [&] { return number(random); });
    const int16_t count = 4;
    std::memcpy(a.list.data(), &count, sizeof count);
}

std::vector<double*> realsOf(Arguments& a) {
    std::vector<double*> all;
    for (Chain& chain : a.chains) {
        for (Calelm& rec : chain) {
            for (const auto field : kRealFields) {
                all.push_back(&(rec.*field));
            }
        }
    }
    for (Reals& reals : a.reals) {
        for (double& v : reals) {
            all.push_back(&v);
        }
    }
    for (double& v : a.scalars) {
        all.push_back(&v);
    }
    for (double* slot :
         {&a.curve.x, &a.curve.y, &a.curve.size1, &a.curve.size2, &a.curve.size3, &a.curve.size4, &a.curve.size5,
          &a.curve.azimuth_in, &a.curve.azimuth_out, &a.curve.angle, &a.curve.tangent1, &a.curve.tangent2}) {
        all.push_back(slot);
    }
    for (AliIpEntry& entry : a.points) {
        all.push_back(&entry.x);
        all.push_back(&entry.y);
    }
    for (std::size_t i = 1; i < a.list.size(); ++i) {
        all.push_back(&a.list[i]);
    }
    return all;
}

} // namespace fenmark::alignment_test
