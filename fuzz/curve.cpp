// Every exported function of the exact curves, chains and profiles over any values: chains are made of what the fuzzer
// gives, and functions called with them. What is done has finite values, and no more is written than there is room for.
#include "fenmark/curve.h"
#include "bytes.h"
#include "require.h"

#include <array>
#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace {

using fenmark::fuzz::Bytes;
using fenmark::fuzz::require;

// Elements of each array that a function gets. A count is at most kMost, so that what two counts make has room too.
constexpr std::size_t kMost = 8;
constexpr std::size_t kRoom = kMost * kMost;

// --- the reals of each structure ---

template <class T, class F>
requires std::is_same_v<T, double>
void eachReal(T& value, F f) {
    f(value);
}
template <class F>
void eachReal(std::size_t&, F) {}
template <class F>
void eachReal(int&, F) {}
template <class F>
void eachReal(FmkPoint& v, F f) {
    f(v.x), f(v.y);
}
template <class F>
void eachReal(FmkPose& v, F f) {
    eachReal(v.point, f), f(v.azimuth);
}
template <class F>
void eachReal(FmkCurve& v, F f) {
    eachReal(v.start, f), f(v.length), f(v.startCurvature), f(v.endCurvature);
}
template <class F>
void eachReal(FmkBox& v, F f) {
    f(v.minX), f(v.minY), f(v.maxX), f(v.maxY);
}
template <class F>
void eachReal(FmkStationEquation& v, F f) {
    f(v.distance), f(v.ahead);
}
template <class F>
void eachReal(FmkChainPlace& v, F f) {
    eachReal(v.point, f), f(v.azimuth), f(v.curvature);
}
template <class F>
void eachReal(FmkChainFoot& v, F f) {
    eachReal(v.point, f), f(v.distance), f(v.station), f(v.offset);
}
template <class F>
void eachReal(FmkChainJoint& v, F f) {
    f(v.distance), f(v.gap), f(v.turn), f(v.curvatureStep);
}
template <class F>
void eachReal(FmkChainCrossing& v, F f) {
    eachReal(v.point, f), f(v.distance), f(v.otherDistance), f(v.angle);
}
template <class F>
void eachReal(FmkStake& v, F f) {
    eachReal(v.point, f), f(v.distance), f(v.station), f(v.offset), f(v.azimuth);
}
template <class F>
void eachReal(FmkFoot& v, F f) {
    eachReal(v.point, f), f(v.along), f(v.offset);
}
template <class F>
void eachReal(FmkCrossing& v, F f) {
    eachReal(v.point, f), f(v.alongFirst), f(v.alongSecond), f(v.angle);
}
template <class F>
void eachReal(FmkIp& v, F f) {
    eachReal(v.point, f), f(v.radius), f(v.enterA), f(v.leaveA);
}
template <class F>
void eachReal(FmkIpCurve& v, F f) {
    f(v.turn), f(v.enterTangent), f(v.leaveTangent);
    for (FmkCurve& curve : v.curves) {
        eachReal(curve, f);
    }
}
template <class F>
void eachReal(FmkVerticalPoint& v, F f) {
    f(v.station), f(v.height), f(v.length), f(v.radius);
}
template <class F>
void eachReal(FmkProfileExtreme& v, F f) {
    f(v.station), f(v.height), f(v.levelFor);
}
template <class F>
void eachReal(FmkCrossfallStation& v, F f) {
    f(v.station), f(v.left), f(v.right);
}
template <class F>
void eachReal(FmkSpacePoint& v, F f) {
    f(v.x), f(v.y), f(v.z);
}
template <class F>
void eachReal(Calelm& v, F f) {
    f(v.sx), f(v.sy), f(v.ex), f(v.ey), f(v.dir), f(v.par), f(v.r1), f(v.r2), f(v.len), f(v.sang), f(v.eang);
}
template <class F>
void eachReal(FmkStakeOptions& v, F f) {
    f(v.every);
}

// --- arguments ---

struct Objects {
    FmkChain* chain = nullptr;
    FmkChain* other = nullptr;
    FmkProfile* profile = nullptr;
    FmkCrossfall* crossfall = nullptr;

    ~Objects() {
        fmk_chainFree(chain);
        fmk_chainFree(other);
        fmk_profileFree(profile);
        fmk_crossfallFree(crossfall);
    }
};

// An array that a function may write to; all of it is 0 before.
struct Output {
    std::function<bool()> finite; // what was written
};

class Arguments {
  public:
    Arguments(Bytes& bytes, Objects& objects) : bytes_(bytes), objects_(objects) {}
    ~Arguments() {
        for (FmkChain* const* chain : chains_) {
            fmk_chainFree(*chain);
        }
        for (FmkProfile* const* profile : profiles_) {
            fmk_profileFree(*profile);
        }
        for (FmkCrossfall* const* crossfall : crossfalls_) {
            fmk_crossfallFree(*crossfall);
        }
    }

    template <class T>
    T next() {
        if constexpr (std::is_same_v<T, double>) {
            return bytes_.real();
        } else if constexpr (std::is_same_v<T, std::size_t>) {
            return bytes_.index(kMost + 1);
        } else if constexpr (std::is_same_v<T, int>) {
            return static_cast<int>(bytes_.index(7)) - 2;
        } else if constexpr (std::is_same_v<T, const FmkChain*>) {
            return bytes_.index(2) == 0 ? objects_.chain : objects_.other;
        } else if constexpr (std::is_same_v<T, const FmkProfile*>) {
            return objects_.profile;
        } else if constexpr (std::is_same_v<T, const FmkCrossfall*>) {
            return bytes_.index(2) == 0 ? nullptr : objects_.crossfall;
        } else if constexpr (std::is_same_v<T, FmkChain**>) {
            return keep(chains_);
        } else if constexpr (std::is_same_v<T, FmkProfile**>) {
            return keep(profiles_);
        } else if constexpr (std::is_same_v<T, FmkCrossfall**>) {
            return keep(crossfalls_);
        } else {
            static_assert(std::is_pointer_v<T>);
            return array<T>();
        }
    }

    const std::vector<Output>& outputs() const { return outputs_; }

  private:
    template <class P>
    P* keep(std::vector<P*>& list) {
        if (bytes_.index(16) == 1) {
            return nullptr;
        }
        list.push_back(new P(nullptr));
        owned_.push_back(std::shared_ptr<P>(list.back()));
        return list.back();
    }

    template <class T>
    T array() {
        using Item = std::remove_const_t<std::remove_pointer_t<T>>;
        if (bytes_.index(24) == 1) {
            return nullptr;
        }
        const auto items = std::make_shared<std::vector<Item>>(kRoom);
        owned_.push_back(items);
        if constexpr (std::is_const_v<std::remove_pointer_t<T>>) {
            for (std::size_t i = 0; i < kMost; ++i) {
                fillItem((*items)[i]);
            }
        } else {
            outputs_.push_back({[items] {
                bool finite = true;
                for (Item& item : *items) {
                    eachReal(item, [&](double v) { finite = finite && std::isfinite(v); });
                }
                return finite;
            }});
        }
        return items->data();
    }

    template <class Item>
    void fillItem(Item& item) {
        eachReal(item, [&](double& v) { v = bytes_.real(); });
        if constexpr (std::is_same_v<Item, Calelm>) {
            item.type = static_cast<std::int16_t>(1 + bytes_.index(5));
        } else if constexpr (std::is_same_v<Item, FmkVerticalPoint>) {
            item.form = static_cast<int>(bytes_.index(4));
        } else if constexpr (std::is_same_v<Item, FmkStakeOptions>) {
            item.stations = array<const double*>();
            item.stationCount = item.stations == nullptr ? 0 : bytes_.index(kMost + 1);
            item.offsets = array<const double*>();
            item.offsetCount = item.offsets == nullptr ? 0 : bytes_.index(kMost + 1);
            item.mainPoints = static_cast<int>(bytes_.index(2));
        }
    }

    Bytes& bytes_;
    Objects& objects_;
    std::vector<FmkChain**> chains_;
    std::vector<FmkProfile**> profiles_;
    std::vector<FmkCrossfall**> crossfalls_;
    std::list<std::shared_ptr<void>> owned_;
    std::vector<Output> outputs_;
};

struct Function {
    std::string name;
    std::function<void(Bytes&, Objects&)> call;
};

template <class Result, class... Ts>
Function described(const char* name, Result (*f)(Ts...)) {
    return {name, [name, f](Bytes& bytes, Objects& objects) {
                Arguments arguments(bytes, objects);
                std::tuple<Ts...> values{arguments.template next<Ts>()...};
                if constexpr (std::is_same_v<Result, int>) {
                    if (std::apply(f, values) >= 0) {
                        for (const Output& output : arguments.outputs()) {
                            require(output.finite(), std::string(name) + " says done with a real that is not finite");
                        }
                    }
                } else {
                    std::apply(f, values);
                }
            }};
}

#define FUNCTION(name) described(#name, name)

const std::vector<Function>& functions() {
    static const std::vector<Function> all = {
        FUNCTION(fmk_chainAtDistance),
        FUNCTION(fmk_chainAtStation),
        FUNCTION(fmk_chainBox),
        FUNCTION(fmk_chainCrossings),
        FUNCTION(fmk_chainCurve),
        FUNCTION(fmk_chainDistances),
        FUNCTION(fmk_chainFeet),
        FUNCTION(fmk_chainFromCurves),
        FUNCTION(fmk_chainFromIps),
        FUNCTION(fmk_chainFromRecords),
        FUNCTION(fmk_chainJoints),
        FUNCTION(fmk_chainLine),
        FUNCTION(fmk_chainLocate),
        FUNCTION(fmk_chainLocateAll),
        FUNCTION(fmk_chainPlaces),
        FUNCTION(fmk_chainPoints),
        FUNCTION(fmk_chainReversed),
        FUNCTION(fmk_chainSize),
        FUNCTION(fmk_chainSpacePoints),
        FUNCTION(fmk_chainStakes),
        FUNCTION(fmk_chainStation),
        FUNCTION(fmk_crossfallAt),
        FUNCTION(fmk_crossfallMake),
        FUNCTION(fmk_curveAtIp),
        FUNCTION(fmk_curveBox),
        FUNCTION(fmk_curveCrossings),
        FUNCTION(fmk_curveCurvature),
        FUNCTION(fmk_curveFeet),
        FUNCTION(fmk_curveLine),
        FUNCTION(fmk_curveMirroredAboutAxis),
        FUNCTION(fmk_curveMirroredAboutChord),
        FUNCTION(fmk_curveMoved),
        FUNCTION(fmk_curveNearest),
        FUNCTION(fmk_curveParallel),
        FUNCTION(fmk_curveParallelPose),
        FUNCTION(fmk_curvePart),
        FUNCTION(fmk_curvePose),
        FUNCTION(fmk_curvePoses),
        FUNCTION(fmk_curveReversed),
        FUNCTION(fmk_curveSplit),
        FUNCTION(fmk_curveThrough),
        FUNCTION(fmk_curvesByIps),
        FUNCTION(fmk_fitG1),
        FUNCTION(fmk_fitG2),
        FUNCTION(fmk_profileAt),
        FUNCTION(fmk_profileExtremes),
        FUNCTION(fmk_profileHeights),
        FUNCTION(fmk_profileMake),
        FUNCTION(fmk_wrapAzimuth),
    };
    return all;
}

#undef FUNCTION

// A chain by one of the ways to make one; null if the values make none.
FmkChain* chainOf(Bytes& bytes) {
    std::array<FmkCurve, kMost> curves{};
    const std::size_t count = 1 + bytes.index(4);
    double curvature = 0.0;
    FmkPose at{};
    const bool joined = bytes.index(2) == 0;
    for (std::size_t i = 0; i < count; ++i) {
        FmkCurve& curve = curves[i];
        eachReal(curve, [&](double& v) { v = bytes.real(); });
        if (joined) {
            curve.start = at;
            curve.length = std::fabs(curve.length);
            curve.startCurvature = curvature;
            curve.endCurvature *= 1e-3;
            curvature = curve.endCurvature;
            if (fmk_curvePose(&curve, curve.length, &at) < 0) {
                break;
            }
        }
    }
    std::array<FmkStationEquation, 2> equations{};
    for (FmkStationEquation& equation : equations) {
        eachReal(equation, [&](double& v) { v = bytes.real(); });
    }
    FmkChain* chain = nullptr;
    const int status =
        fmk_chainFromCurves(curves.data(), count, bytes.real(), equations.data(), bytes.index(3), &chain);
    require((status >= 0) == (chain != nullptr), "a chain comes with a status that says done");
    return chain;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    std::ifstream file(FENMARK_SOURCE_DIR "/docs/exports.txt");
    std::set<std::string> listed;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("fmk_")) {
            listed.insert(line);
        }
    }
    // Freed by what made them, and a text for each status.
    for (const char* name : {"fmk_chainFree", "fmk_profileFree", "fmk_crossfallFree", "fmk_statusText"}) {
        listed.erase(name);
    }
    std::set<std::string> here;
    for (const Function& function : functions()) {
        here.insert(function.name);
    }
    require(!listed.empty() && here == listed, "every exported function is in the table");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const Function& function = functions()[bytes.index(functions().size())];
    require(fmk_statusText(static_cast<int>(bytes.take<std::int8_t>())) != nullptr, "a text for every status");
    Objects objects;
    if (function.name.starts_with("fmk_chain")) {
        objects.chain = chainOf(bytes);
        objects.other = chainOf(bytes);
    }
    if (function.name.find("rofile") != std::string::npos || function.name == "fmk_chainSpacePoints") {
        std::array<FmkVerticalPoint, 4> points{};
        double station = 0.0;
        for (FmkVerticalPoint& point : points) {
            station += std::fabs(bytes.real());
            point = {station, bytes.real(), bytes.real(), bytes.real(), static_cast<int>(bytes.index(3))};
        }
        fmk_profileMake(points.data(), 1 + bytes.index(4), &objects.profile);
    }
    if (function.name.find("rossfall") != std::string::npos || function.name == "fmk_chainSpacePoints") {
        std::array<FmkCrossfallStation, 4> stations{};
        double station = 0.0;
        for (FmkCrossfallStation& at : stations) {
            station += std::fabs(bytes.real());
            at = {station, bytes.real(), bytes.real()};
        }
        fmk_crossfallMake(stations.data(), 1 + bytes.index(4), &objects.crossfall);
    }
    function.call(bytes, objects);
    return 0;
}
