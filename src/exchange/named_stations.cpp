// Station equations of a road, from the names that its longitudinal results have.
#include "exchange/named_stations.h"

#include "exchange/station_text.h"
#include "sima/text/utf8.h"

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::exchange {

using curve::NamedStation;
using curve::StationEquation;

namespace {

constexpr double kSameCounting = 0.01;                                          // metres between name and distance
constexpr std::array<double, 5> kPitches{kStakePitch, 100.0, 50.0, 25.0, 10.0}; // metres, the usual one first

// Full-width letters, digits and signs as their plain ones: files write both.
std::string plainWidth(std::string_view name) {
    constexpr char32_t kFirst = 0xFF01; // of "!"; the others follow in the order of ASCII
    constexpr char32_t kLast = 0xFF5E;
    std::string plain;
    while (!name.empty()) {
        const char32_t c = sima::takeCharacter(name);
        sima::appendUtf8(plain, c >= kFirst && c <= kLast ? c - kFirst + U'!' : c);
    }
    return plain;
}

struct NamedResult {
    std::string name;
    double distance = 0.0; // from the alignment's start
};

// The results in order that have the name of a station. A bare number is none: it may count points. Of results of one name,
// as at a wall, the first.
std::vector<NamedResult> namedResults(const AlignmentResults& results, double startStation) {
    std::vector<NamedResult> named;
    for (const LongitudinalPoint& point : results.longitudinal) {
        std::string name = plainWidth(point.name);
        if (parseReal(name) || !parseStation(name) || (!named.empty() && named.back().name == name)) {
            continue;
        }
        named.push_back({std::move(name), point.station - startStation});
    }
    return named;
}

// The results whose counting a neighbour shares.
std::vector<NamedStation> borneOut(const std::vector<NamedResult>& named, double pitch) {
    std::vector<NamedStation> all;
    all.reserve(named.size());
    for (const NamedResult& result : named) {
        all.push_back({*parseStation(result.name, pitch), result.distance});
    }
    const auto agree = [&all](std::size_t i, std::size_t j) {
        return std::abs((all[i].station - all[i].distance) - (all[j].station - all[j].distance)) <= kSameCounting;
    };
    std::vector<NamedStation> kept;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if ((i > 0 && agree(i - 1, i)) || (i + 1 < all.size() && agree(i, i + 1))) {
            kept.push_back(all[i]);
        }
    }
    return kept;
}

} // namespace

std::vector<StationEquation> stationEquationsOf(const AlignmentResults& results, double startStation) {
    const std::vector<NamedResult> named = namedResults(results, startStation);
    std::vector<NamedStation> best;
    for (const double pitch : kPitches) {
        if (std::vector<NamedStation> kept = borneOut(named, pitch); kept.size() > best.size()) {
            best = std::move(kept);
        }
    }
    std::vector<StationEquation> equations;
    if (2 * best.size() < named.size() ||
        curve::equationsFromResults(startStation, best, kSameCounting, equations) != curve::ChainStatus::Ok) {
        equations.clear();
    }
    return equations;
}

} // namespace fenmark::exchange
