// Arguments for any exported function: elements and reals as a program would give them, and a way to spoil each real.
#pragma once

#include "every_function.h"

#include <vector>

namespace fenmark::alignment_test {

// Random arguments for a function with records of these types; in one case of three they join to a chain.
void fill(Random& random, const char* types, Arguments& a);

// Every real of the arguments, in one order.
std::vector<double*> realsOf(Arguments& a);

} // namespace fenmark::alignment_test
