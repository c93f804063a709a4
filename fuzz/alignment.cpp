// Every exported function of the alignment library over arguments that are a program's, with some of their reals replaced.
//
// An input begins with the function and a number that its arguments are drawn from. Places and values of replaced reals
// follow.
#include "alignment/hostile_arguments.h"
#include "bytes.h"
#include "require.h"

#include <cmath>
#include <cstring>
#include <set>

namespace {

using namespace fenmark::alignment_test;

// Functions that answer 0 whatever they are given: their values are to be looked at. The headers say so.
const std::set<std::string> kWithoutFailure = {
    "CDAcalxy",    "CDLcalxy",    "CDRcalxy",    "CDOODistForRAR", "CDgetOrgA", "CDreverA",  "ali_KEnAng",
    "ali_KEnPncl", "ali_KEnPntb", "ali_KEnPntc", "ali_getlA",      "ali_paraS", "ali_pmovA", "ali_pmovR",
    "ali_pmovS",   "ali_tmovA",   "ali_tmovR",   "ali_tmovS",      "para_pmovr"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fenmark::fuzz::Bytes bytes(data, size);
    const Function& function = everyFunction()[bytes.index(everyFunction().size())];
    Random random(bytes.take<std::uint16_t>());
    Arguments arguments;
    fill(random, function.types, arguments);
    const std::vector<double*> reals = realsOf(arguments);
    while (!bytes.empty()) {
        double& real = *reals[bytes.index(reals.size())];
        const double given = bytes.real();
        real = bytes.take<std::uint8_t>() % 4 == 0 ? real * (1.0 + given * 1e-9) : given;
    }
    std::vector<double> before;
    before.reserve(reals.size());
    for (const double* real : reals) {
        before.push_back(*real);
    }
    const int status = function.call(arguments).status;
    if (function.answer != Answer::status || status < 0 || kWithoutFailure.contains(function.name)) {
        return 0;
    }
    for (std::size_t i = 0; i < reals.size(); ++i) {
        fenmark::fuzz::require(std::isfinite(*reals[i]) || std::memcmp(reals[i], &before[i], sizeof(double)) == 0,
                               std::string(function.name) + " says done with a real that is not finite");
    }
    return 0;
}
