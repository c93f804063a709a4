// Every exported function of the library behind one interface: called with arguments that a generator fills in, with
// what it wrote found by comparison. For what holds of all functions alike.
#pragma once

#include "support/absurd_values.h"
#include "support_alignment.h"

#include <array>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

namespace fenmark::alignment_test {

using test::kRealFields;

inline constexpr std::size_t kChainLength = 4;
using Chain = std::array<Calelm, kChainLength>;
using Reals = std::array<double, 16>;

// The arguments of one call. Pointers lead to arrays that are long enough for every function.
struct Arguments {
    std::array<Chain, 8> chains;
    std::array<Reals, 10> reals; // what pointers to reals lead to
    std::array<double, 16> scalars;
    std::array<int, 8> wholes;
    std::array<std::array<int, 4>, 2> indexes;
    AliIpCurve curve;
    std::array<AliIpEntry, 4> points;
    std::array<double, 1 + 4 * 5> list; // a monitoring list: slots of 64 bits, the count in the first
};

// Gives the arguments out in the order of the parameters.
class Next {
  public:
    explicit Next(Arguments& arguments) : a_(arguments) {}

    template <class T>
    T take() {
        using Plain = std::remove_const_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_same_v<T, double>) {
            return a_.scalars[scalar_++];
        } else if constexpr (std::is_same_v<T, int>) {
            return a_.wholes[whole_++];
        } else if constexpr (std::is_same_v<Plain, Calelm>) {
            return a_.chains[chain_++].data();
        } else if constexpr (std::is_same_v<Plain, double>) {
            return a_.reals[real_++].data();
        } else if constexpr (std::is_same_v<Plain, int>) {
            return a_.indexes[index_++].data();
        } else if constexpr (std::is_same_v<Plain, AliIpCurve>) {
            return &a_.curve;
        } else if constexpr (std::is_same_v<Plain, AliIpEntry>) {
            return a_.points.data();
        } else if constexpr (std::is_same_v<Plain, AliMoniList>) {
            return reinterpret_cast<AliMoniList*>(a_.list.data());
        } else {
            static_assert(std::is_same_v<T, const char*>);
            return "ali_intpSS";
        }
    }

  private:
    Arguments& a_;
    std::size_t scalar_ = 0;
    std::size_t whole_ = 0;
    std::size_t chain_ = 0;
    std::size_t real_ = 0;
    std::size_t index_ = 0;
};

enum class Answer { status, value, nothing };

struct Answered {
    int status = 0;     // 0 where there is none
    double value = 0.0; // of a function that returns one
};

struct Function {
    const char* name;
    const char* types; // of the records: S, R or A each, a chain's together, arguments parted by blanks
    Answer answer;
    std::function<Answered(Arguments&)> call;
};

template <class Result, class... Ts>
Function described(const char* name, const char* types, Result (*f)(Ts...)) {
    constexpr Answer answer = std::is_same_v<Result, int>      ? Answer::status
                              : std::is_same_v<Result, double> ? Answer::value
                                                               : Answer::nothing;
    return {name, types, answer, [f](Arguments& arguments) {
                Next next(arguments);
                std::tuple<Ts...> values{next.template take<Ts>()...}; // in braces: from left to right
                if constexpr (std::is_same_v<Result, int>) {
                    return Answered{static_cast<int16_t>(std::apply(f, values) & 0xffff), 0.0};
                } else if constexpr (std::is_same_v<Result, double>) {
                    return Answered{0, std::apply(f, values)};
                } else {
                    (void)std::apply(f, values);
                    return Answered{};
                }
            }};
}

// Every function of docs/exports.txt.
const std::vector<Function>& everyFunction();

} // namespace fenmark::alignment_test
